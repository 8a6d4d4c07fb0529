#include "profile_text/ProfileLines.h"

namespace vastrelline {

bool IsProfileBlank(uint32_t unit) {
    constexpr uint32_t kEndOfFileCharacter = 0x1A;
    return unit == ' ' || unit == '\t' || unit == '\v' || unit == '\f' || unit == kEndOfFileCharacter;
}

ProfileLineReader::ProfileLineReader(std::string_view fileBytes, ByteRange range,
                                     const ProfileEncoding& encoding)
    : bytes_(fileBytes),
      encoding_(encoding),
      position_(range.begin),
      end_(range.end - range.Size() % encoding.UnitSize()) {}

std::optional<ProfileLine> ProfileLineReader::Next() {
    if (position_ == end_) return std::nullopt;
    ProfileLine line;
    line.whole.begin = position_;
    line.content.begin = position_;
    while (position_ < end_) {
        const uint32_t unit = encoding_.UnitAt(bytes_, position_);
        if (unit == '\n' || unit == '\r') break;
        position_ += encoding_.UnitSize();
    }
    line.content.end = position_;
    position_ = SkipLineEnd(position_);
    line.whole.end = position_;
    ReadParts(line);
    return line;
}

size_t ProfileLineReader::SkipLineEnd(size_t offset) const {
    if (offset == end_) return offset;
    const bool isReturn = encoding_.UnitAt(bytes_, offset) == '\r';
    offset += encoding_.UnitSize();
    if (isReturn && offset < end_ && encoding_.UnitAt(bytes_, offset) == '\n') offset += encoding_.UnitSize();
    return offset;
}

ByteRange ProfileLineReader::Trim(ByteRange range) const {
    const size_t unitSize = encoding_.UnitSize();
    while (!range.IsEmpty() && IsProfileBlank(encoding_.UnitAt(bytes_, range.begin))) range.begin += unitSize;
    while (!range.IsEmpty() && IsProfileBlank(encoding_.UnitAt(bytes_, range.end - unitSize)))
        range.end -= unitSize;
    return range;
}

size_t ProfileLineReader::Find(ByteRange range, uint32_t unit) const {
    size_t offset = range.begin;
    while (offset < range.end && encoding_.UnitAt(bytes_, offset) != unit) offset += encoding_.UnitSize();
    return offset;
}

size_t ProfileLineReader::FindLast(ByteRange range, uint32_t unit) const {
    for (size_t offset = range.end; offset > range.begin;) {
        offset -= encoding_.UnitSize();
        if (encoding_.UnitAt(bytes_, offset) == unit) return offset;
    }
    return range.end;
}

void ProfileLineReader::ReadParts(ProfileLine& line) const {
    const size_t unitSize = encoding_.UnitSize();
    const ByteRange text = Trim(line.content);
    if (text.IsEmpty()) return;
    const uint32_t first = encoding_.UnitAt(bytes_, text.begin);
    if (first == ';') {
        line.kind = LineKind::Comment;
        return;
    }
    if (first == '[') {
        const size_t close = FindLast(text, ']');
        if (close != text.end) {
            line.kind = LineKind::Head;
            line.name = Trim({text.begin + unitSize, close});
            return;
        }
    }
    line.kind = LineKind::Entry;
    const size_t equals = Find(text, '=');
    line.name = Trim({text.begin, equals});
    line.hasValue = equals != text.end;
    if (!line.hasValue) return;
    line.rawValue = {equals + unitSize, line.content.end};
    line.value = Trim(line.rawValue);
    if (line.value.IsEmpty()) line.value = {line.content.end, line.content.end};
}

}  // namespace vastrelline
