// SPDX-License-Identifier: Apache-2.0
#include "profile_text/ProfileText.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

#include "profile_text/CaseFolding.h"
#include "profile_text/ValueText.h"

namespace vastrelline {

namespace {

constexpr uint32_t kAsciiEnd = 0x80;

// The same number for names that match but for the case of their letters.
class NameHash {
public:
    void Add(wchar_t character) {
        constexpr uint64_t kPrime = 0x100000001B3;
        value_ = (value_ ^ static_cast<uint64_t>(Fold(character))) * kPrime;
    }
    // Multiplying moves what tells names apart upwards, and the lowest bits are what a table looks at first.
    uint64_t Value() const { return value_ ^ (value_ >> 32U); }

private:
    // Most letters are of ASCII, where a look into a table is not needed.
    static wchar_t Fold(wchar_t character) {
        constexpr wchar_t kToLower = L'a' - L'A';
        if (static_cast<uint32_t>(character) >= kAsciiEnd) return FoldCase(character);
        return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character + kToLower)
                                                      : character;
    }

    uint64_t value_ = 0xCBF29CE484222325;
};

// FNV-1a (Fowler, Noll and Vo 1991), a character at a time.
uint64_t HashText(std::wstring_view text) {
    NameHash hash;
    for (const wchar_t character : text) hash.Add(character);
    return hash.Value();
}

// A caller's text ends at its first zero, so what a file holds behind one cannot be handed over.
std::wstring CutAtZero(std::wstring text) {
    text.resize(std::min(text.size(), text.find(L'\0')));
    return text;
}

uint32_t CopyText(std::wstring_view text, wchar_t* buffer, uint32_t size) {
    if (buffer == nullptr || size == 0) return 0;
    const size_t count = std::min<size_t>(text.size(), size - 1);
    std::copy_n(text.begin(), count, buffer);
    buffer[count] = L'\0';
    return static_cast<uint32_t>(count);
}

// A list: each entry with its terminator, and one more terminator at the end.
uint32_t CopyList(const std::vector<std::wstring>& entries, wchar_t* buffer, uint32_t size) {
    if (buffer == nullptr || size == 0) return 0;
    std::wstring list;
    for (const std::wstring& entry : entries) list.append(entry).push_back(L'\0');
    const bool isWhole = list.size() < size;
    const size_t roomForText = size > 2 ? size - 2 : 0;
    const size_t count = isWhole ? list.size() : roomForText;
    std::copy_n(list.begin(), count, buffer);
    // A whole list brings the first of the two terminators at its end along, unless it is empty.
    const size_t terminatorCount = isWhole && !list.empty() ? 1 : 2;
    std::fill_n(buffer + count, std::min(terminatorCount, size - count), L'\0');
    return static_cast<uint32_t>(count);
}

}  // namespace

ProfileText::ProfileText(std::string bytes, const ProfileCodec& codec)
    : bytes_(std::move(bytes)), encoding_(bytes_, codec) {
    if (bytes_.size() >= std::numeric_limits<uint32_t>::max())
        throw std::length_error("ProfileText: profile too large");
}

std::wstring ProfileText::Decode(ByteRange range) const {
    return encoding_.Decode(std::string_view(bytes_).substr(range.begin, range.Size()));
}

// Most names differ in their first letter already, and need not be decoded to see it.
bool ProfileText::IsNamed(ByteRange nameInFile, std::wstring_view name) const {
    if (!nameInFile.IsEmpty() && !name.empty()) {
        const uint32_t inFile = encoding_.UnitAt(bytes_, nameInFile.begin);
        const uint32_t wanted = static_cast<char32_t>(name.front());
        const bool isAscii = inFile < kAsciiEnd && wanted < kAsciiEnd;
        if (isAscii && FoldCase(static_cast<wchar_t>(inFile)) != FoldCase(name.front())) return false;
    }
    return EqualFolded(Decode(nameInFile), name);
}

ProfileLineReader ProfileText::Lines(ByteRange range) const { return {bytes_, range, encoding_}; }

uint64_t ProfileText::HashName(ByteRange nameInFile) const {
    NameHash hash;
    for (size_t offset = nameInFile.begin; offset < nameInFile.end; offset += encoding_.UnitSize()) {
        const uint32_t unit = encoding_.UnitAt(bytes_, offset);
        if (unit >= kAsciiEnd) return HashText(Decode(nameInFile));
        hash.Add(static_cast<wchar_t>(unit));
    }
    return hash.Value();
}

bool ProfileText::AreSameName(ByteRange one, ByteRange other) const {
    const std::string_view bytes = bytes_;
    return bytes.substr(one.begin, one.Size()) == bytes.substr(other.begin, other.Size()) ||
           EqualFolded(Decode(one), Decode(other));
}

ProfileLine ProfileText::LineAt(size_t position) const {
    return Lines({position, bytes_.size()}).Next().value_or(ProfileLine());
}

// The first line of each name among those of one kind.
NameTable ProfileText::TabulateNames(ByteRange range, LineKind kind) const {
    NameTable table;
    ProfileLineReader lines = Lines(range);
    while (const std::optional<ProfileLine> line = kind == LineKind::Head ? lines.NextHead() : lines.Next()) {
        if (line->kind != kind) continue;
        table.Add(HashName(line->name), line->whole.begin, line->name,
                  [&](ByteRange name) { return AreSameName(name, line->name); });
    }
    return table;
}

std::optional<size_t> ProfileText::FindHead(std::wstring_view name) const {
    if (!heads_) heads_ = TabulateNames({encoding_.MarkSize(), bytes_.size()}, LineKind::Head);
    return heads_->Find(HashText(name), [&](ByteRange other) { return IsNamed(other, name); });
}

// Behind the last whole unit.
size_t ProfileText::TextEnd() const {
    return bytes_.size() - (bytes_.size() - encoding_.MarkSize()) % encoding_.UnitSize();
}

// The section of the head at a position; of kNoHead, that of the lines before the first head.
ProfileText::KnownSection& ProfileText::Know(size_t head) const {
    const auto [place, isNew] = known_.try_emplace(head);
    KnownSection& known = place->second;
    if (!isNew) return known;
    const size_t textStart = encoding_.MarkSize();
    const size_t textEnd = TextEnd();
    const ByteRange headLine = head == kNoHead ? ByteRange{textStart, textStart} : LineAt(head).whole;
    const std::optional<ProfileLine> nextHead = Lines({headLine.end, textEnd}).NextHead();
    const size_t end = nextHead ? nextHead->whole.begin : textEnd;
    known.section = {{headLine.begin, end}, {headLine.end, end}};
    return known;
}

std::optional<ProfileSection> ProfileText::FindSection(std::wstring_view name) const {
    if (name.empty()) return Know(kNoHead).section;
    const std::optional<size_t> head = FindHead(name);
    if (!head) return std::nullopt;
    return Know(*head).section;
}

std::optional<ProfileLine> ProfileText::FindEntry(const ProfileSection& section,
                                                  std::wstring_view key) const {
    const bool hasHead = section.lines.begin > section.whole.begin;
    KnownSection& known = Know(hasHead ? section.whole.begin : kNoHead);
    if (!known.keys) known.keys = TabulateNames(section.lines, LineKind::Entry);
    const std::optional<size_t> entry =
        known.keys->Find(HashText(key), [&](ByteRange name) { return IsNamed(name, key); });
    if (!entry) return std::nullopt;
    return LineAt(*entry);
}

std::optional<std::wstring> ProfileText::FindValue(std::wstring_view section, std::wstring_view key) const {
    const std::optional<ProfileSection> found = FindSection(section);
    if (!found) return std::nullopt;
    const std::optional<ProfileLine> entry = FindEntry(*found, key);
    if (!entry || !entry->hasValue) return std::nullopt;
    return CutAtZero(Decode(entry->value));
}

std::vector<std::wstring> ProfileText::ListSections() const {
    std::vector<std::wstring> names;
    ProfileLineReader lines = Lines({encoding_.MarkSize(), bytes_.size()});
    while (const std::optional<ProfileLine> line = lines.Next()) {
        if (line->kind != LineKind::Head) continue;
        std::wstring name = CutAtZero(Decode(line->name));
        if (!name.empty()) names.push_back(std::move(name));  // an empty entry would end the list
    }
    return names;
}

void ProfileText::ForEachKey(std::wstring_view section,
                             const std::function<void(const std::wstring& key)>& use) const {
    const std::optional<ProfileSection> found = FindSection(section);
    if (!found) return;
    ProfileLineReader lines = Lines(found->lines);
    while (const std::optional<ProfileLine> line = lines.Next()) {
        if (line->kind != LineKind::Entry) continue;
        const std::wstring key = CutAtZero(Decode(line->name));
        if (!key.empty()) use(key);
    }
}

std::vector<std::wstring> ProfileText::ListKeys(std::wstring_view section) const {
    std::vector<std::wstring> keys;
    ForEachKey(section, [&](const std::wstring& key) { keys.push_back(key); });
    return keys;
}

std::wstring ProfileText::ComposeListEntry(const ProfileLine& line) const {
    std::wstring entry = Decode(line.name);
    if (line.hasValue) entry.append(L"=").append(Decode(line.value));
    return CutAtZero(std::move(entry));
}

std::vector<std::wstring> ProfileText::ListEntries(std::wstring_view section) const {
    std::vector<std::wstring> entries;
    const std::optional<ProfileSection> found = FindSection(section);
    if (!found) return entries;
    ProfileLineReader lines = Lines(found->lines);
    while (const std::optional<ProfileLine> line = lines.Next()) {
        if (line->kind != LineKind::Entry) continue;
        std::wstring entry = ComposeListEntry(*line);
        if (!entry.empty()) entries.push_back(std::move(entry));
    }
    return entries;
}

bool ProfileText::HasEntries(std::wstring_view section) const {
    const std::optional<ProfileSection> found = FindSection(section);
    if (!found) return false;
    ProfileLineReader lines = Lines(found->lines);
    while (const std::optional<ProfileLine> line = lines.Next()) {
        if (line->kind == LineKind::Entry && !ComposeListEntry(*line).empty()) return true;
    }
    return false;
}

std::wstring_view TrimName(std::wstring_view name) {
    const auto isBlank = [](wchar_t character) { return IsProfileBlank(static_cast<uint32_t>(character)); };
    while (!name.empty() && isBlank(name.front())) name.remove_prefix(1);
    while (!name.empty() && isBlank(name.back())) name.remove_suffix(1);
    return name;
}

int32_t ReadProfileTextInt(const ProfileText& profile, const wchar_t* section, const wchar_t* key,
                           int32_t defaultValue) {
    if (section == nullptr || key == nullptr) return defaultValue;
    const std::optional<std::wstring> value = profile.FindValue(TrimName(section), TrimName(key));
    return value ? ParseLeadingInteger(DropQuotes(*value)) : defaultValue;
}

uint32_t ReadProfileTextString(const ProfileText& profile, const wchar_t* section, const wchar_t* key,
                               const wchar_t* defaultValue, wchar_t* buffer, uint32_t size) {
    if (section == nullptr) return CopyList(profile.ListSections(), buffer, size);
    if (key == nullptr) return CopyList(profile.ListKeys(TrimName(section)), buffer, size);
    if (const std::optional<std::wstring> value = profile.FindValue(TrimName(section), TrimName(key)))
        return CopyText(DropQuotes(*value), buffer, size);
    std::wstring_view text = defaultValue == nullptr ? L"" : defaultValue;
    while (text.ends_with(L' ')) text.remove_suffix(1);
    return CopyText(text, buffer, size);
}

uint32_t ReadProfileTextSection(const ProfileText& profile, const wchar_t* section, wchar_t* buffer,
                                uint32_t size) {
    // The list takes the name as it stands, blanks and all; only the functions for one key drop them.
    return CopyList(section == nullptr ? std::vector<std::wstring>() : profile.ListEntries(section), buffer,
                    size);
}

}  // namespace vastrelline
