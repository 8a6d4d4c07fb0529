// SPDX-License-Identifier: Apache-2.0
#include "profile_text/ProfileLines.h"

#include <algorithm>

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
    ProfileLine line = TakeLine();
    ReadParts(line);
    return line;
}

std::optional<ProfileLine> ProfileLineReader::NextHead() {
    const size_t unitSize = encoding_.UnitSize();
    while (position_ < end_) {
        ProfileLine line = TakeLine();
        size_t first = line.content.begin;
        while (first < line.content.end && IsProfileBlank(encoding_.UnitAt(bytes_, first))) first += unitSize;
        if (first == line.content.end || encoding_.UnitAt(bytes_, first) != '[') continue;
        ReadParts(line);
        if (line.kind == LineKind::Head) return line;
    }
    return std::nullopt;
}

// The next line, without its parts.
ProfileLine ProfileLineReader::TakeLine() {
    ProfileLine line;
    line.whole.begin = position_;
    line.content.begin = position_;
    position_ = FindLineEnd();
    line.content.end = position_;
    position_ = SkipLineEnd(position_);
    line.whole.end = position_;
    return line;
}

// Where the line that begins here ends. Looked for in short stretches, so that a text with line ends of one
// kind is not searched to its end for the other kind with every line.
size_t ProfileLineReader::FindLineEnd() const {
    constexpr size_t kStretch = 256;  // whole units of either encoding
    for (size_t begin = position_; begin < end_;) {
        const size_t stretchEnd = std::min(begin + kStretch, end_);
        const size_t found = Find({begin, Find({begin, stretchEnd}, '\n')}, '\r');
        if (found < stretchEnd) return found;
        begin = stretchEnd;
    }
    return end_;
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
    if (encoding_.UnitSize() == 1) {
        const size_t found = bytes_.substr(0, range.end).find(static_cast<char>(unit), range.begin);
        return std::min(found, range.end);
    }
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
