// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "lint/Rules.h"

namespace vastrelline {
namespace {

// UTF-8 bytes that are none are read as characters of this range, one for each.
bool IsStrayByte(wchar_t character) { return character >= 0xDC80 && character <= 0xDCFF; }

bool IsSurrogate(wchar_t character) { return character >= 0xD800 && character <= 0xDFFF; }

std::string HexText(uint32_t byte) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    return {'0', 'x', kDigits[byte >> 4U & 0xFU], kDigits[byte & 0xFU]};
}

// Where odd characters stand, by kind: the first of each and how many.
struct OddCharacters {
    struct Kind {
        size_t offset = 0;
        size_t count = 0;
        bool isRead = false;  // in a name or value, not only in a comment
        uint32_t byte = 0;

        void Add(size_t at, bool isReadThere, uint32_t value) {
            if (count++ == 0 || (isReadThere && !isRead)) {
                offset = at;
                byte = value;
            }
            isRead = isRead || isReadThere;
        }
    };
    Kind stray;  // bytes that are not UTF-8, halves of UTF-16 characters
    Kind zeros;
    Kind marks;  // byte order marks within the text
};

bool IsPlainAscii(const ProfileFile& file, ByteRange range) {
    const std::string& bytes = file.Text().Bytes();
    return std::all_of(bytes.begin() + static_cast<ptrdiff_t>(range.begin),
                       bytes.begin() + static_cast<ptrdiff_t>(range.end),
                       [](char c) { return static_cast<unsigned char>(c) - 1U < 0x7FU; });
}

void Look(const ProfileFile& file, const ProfileLine& line, OddCharacters& odd) {
    constexpr wchar_t kMark = 0xFEFF;
    const bool isRead = line.kind == LineKind::Head || line.kind == LineKind::Entry;
    const bool isUtf16 = file.Text().Encoding().UnitSize() == 2;
    if (!isUtf16 && IsPlainAscii(file, line.content)) return;
    size_t offset = line.content.begin;
    for (const wchar_t character : file.Text().Decode(line.content)) {
        if (isUtf16 ? IsSurrogate(character) : IsStrayByte(character))
            odd.stray.Add(offset, isRead, static_cast<uint32_t>(character) & 0xFFU);
        if (character == L'\0') odd.zeros.Add(offset, isRead, 0);
        if (character == kMark) odd.marks.Add(offset, isRead, 0);
        const std::wstring one(1, character);
        offset += file.Text().Encoding().Encode(one).size();
    }
}

std::string Times(size_t count) {
    if (count == 1) return {};
    return count == 2 ? ", and once more" : ", and " + std::to_string(count - 1) + " times more";
}

Severity SeverityOf(const OddCharacters::Kind& kind) {
    return kind.isRead ? Severity::Warning : Severity::Note;
}

// Text of 16 bits a letter without its mark: every second byte is 0.
bool LooksLikeUtf16(const std::string& bytes) {
    constexpr size_t kLooked = 512;
    const size_t end = std::min(bytes.size(), kLooked);
    std::array<size_t, 2> zeros{};
    for (size_t i = 0; i < end; ++i)
        if (bytes[i] == '\0') ++zeros[i % 2];
    return end >= 4 && (zeros[0] > end / 3 || zeros[1] > end / 3) && (zeros[0] == 0 || zeros[1] == 0);
}

// A picture or a program: more than one byte in twenty is a control character that no text has.
bool LooksLikeNoText(const std::string& bytes) {
    constexpr size_t kLooked = 4096;
    constexpr ptrdiff_t kFewest = 8;
    constexpr ptrdiff_t kOneIn = 20;
    const auto end = bytes.begin() + static_cast<ptrdiff_t>(std::min(bytes.size(), kLooked));
    const ptrdiff_t controls = std::count_if(bytes.begin(), end, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20U && !IsProfileBlank(byte) && c != '\r' && c != '\n';
    });
    return controls >= kFewest && controls * kOneIn > end - bytes.begin();
}

}  // namespace

void FindMissingSections(const ProfileFile& file, FindingSink& sink) {
    if (file.Text().Bytes().empty()) {
        sink.AddForFile("the profile is empty: every run takes defaults; add a section such as [General]");
        return;
    }
    for (const ProfileFileSection& section : file.Sections())
        if (section.lineNumber > 0) return;
    sink.AddForFile("there is no section, so no line is read; begin one with a head such as [General]");
}

void FindOddEncoding(const ProfileFile& file, FindingSink& sink) {
    const std::string& bytes = file.Text().Bytes();
    const ProfileEncoding& encoding = file.Text().Encoding();
    if (encoding.MarkSize() == 0 && LooksLikeUtf16(bytes)) {
        sink.Add(
            Severity::Error, 0,
            "this looks like UTF-16 without its byte order mark and is read byte by byte; store it as UTF-8");
        return;
    }
    if (encoding.UnitSize() == 1 && LooksLikeNoText(bytes)) {
        sink.Add(Severity::Error, 0, "this is no text; give a profile");
        return;
    }
    OddCharacters odd;
    ProfileLineReader lines = file.Text().Lines({encoding.MarkSize(), bytes.size()});
    while (const std::optional<ProfileLine> line = lines.Next()) Look(file, *line, odd);
    const bool isUtf16 = encoding.UnitSize() == 2;
    if (odd.stray.count > 0)
        sink.Add(SeverityOf(odd.stray), odd.stray.offset,
                 isUtf16 ? "half a character of UTF-16" + Times(odd.stray.count) + "; store the file as UTF-8"
                         : "byte " + HexText(odd.stray.byte) + " is not UTF-8" + Times(odd.stray.count) +
                               " and read another way on each system; store the file as UTF-8");
    if (odd.zeros.count > 0)
        sink.Add(
            SeverityOf(odd.zeros), odd.zeros.offset,
            "a zero character" + Times(odd.zeros.count) + " ends what is read of its line; take it away");
    if (odd.marks.count > 0)
        sink.Add(SeverityOf(odd.marks), odd.marks.offset,
                 "a byte order mark within the text" + Times(odd.marks.count) + "; take it away");
    if (isUtf16 && bytes.size() % 2 != 0)
        sink.Add(Severity::Warning, bytes.size() - 1, "the last byte is half a character; take it away");
}

void FindLinesBeforeHeads(const ProfileFile& file, FindingSink& sink) {
    if (file.Sections().size() < 2) return;  // a file without any head is told about as a whole
    const ProfileFileSection& before = file.Sections().front();
    if (before.lineNumber > 0) return;
    for (const ProfileEntry& entry : before.entries)
        sink.Add(
            entry.line.name.begin,
            ShownText(entry.key) + " stands before the first section and is never read; move it into one");
}

void FindRepeatedSections(const ProfileFile& file, FindingSink& sink) {
    for (const ProfileFileSection& section : file.Sections()) {
        if (section.lineNumber == 0 || section.counts || section.name.empty()) continue;
        const ProfileFileSection* const first = file.FindSection(section.name);
        sink.Add(section.head.begin, "section " + ShownText(section.name) + " stands here again and line " +
                                         std::to_string(first->lineNumber) +
                                         " counts; nothing below is read, give it another name");
    }
}

void FindUnnameableSections(const ProfileFile& file, FindingSink& sink) {
    for (const ProfileFileSection& section : file.Sections()) {
        if (section.lineNumber == 0) continue;
        if (section.name.empty())
            sink.Add(section.head.begin, "this section has no name, so no host can name it; give it one");
        else if (section.name.find('\0') != std::string::npos)
            sink.Add(section.head.begin, "no host can name " + ShownText(section.name) +
                                             ", which holds a zero character; rename it");
    }
}

}  // namespace vastrelline
