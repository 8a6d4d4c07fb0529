// SPDX-License-Identifier: Apache-2.0
#include "profile_text/ProfileEdit.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "profile_text/ProfileText.h"

namespace vastrelline {

namespace {

constexpr std::wstring_view kUsualLineEnd = L"\r\n";

std::wstring ComposeEntry(std::wstring_view key, std::wstring_view value) {
    return std::wstring(key).append(L"=").append(value);
}

std::wstring ComposeHead(std::wstring_view section) {
    return std::wstring(L"[").append(section).append(L"]");
}

// The one line that a text makes in a profile, nothing if it is none or several.
std::optional<ProfileLine> ParseOneLine(const ProfileText& text) {
    const ByteRange all = {text.Encoding().MarkSize(), text.Bytes().size()};
    const std::optional<ProfileLine> line = text.Lines(all).Next();
    if (!line || line->content.Size() != all.Size()) return std::nullopt;
    return line;
}

// Whether a line of this key and value comes back as such: no line end within, no equals sign in the key, no
// key that looks like a comment or a head.
bool IsReadableEntry(std::wstring_view key, std::wstring_view value) {
    const ProfileText text(kUtf8Codec.encode(ComposeEntry(key, value)));
    const std::optional<ProfileLine> line = ParseOneLine(text);
    return line && line->kind == LineKind::Entry && line->hasValue &&
           line->name.Size() == kUtf8Codec.encode(key).size();
}

bool IsReadableHead(std::wstring_view section) {
    const ProfileText text(kUtf8Codec.encode(ComposeHead(section)));
    const std::optional<ProfileLine> line = ParseOneLine(text);
    return line && line->kind == LineKind::Head && line->name.Size() == kUtf8Codec.encode(section).size();
}

ProfileEditResult Erase(std::string& bytes, ByteRange range) {
    if (range.IsEmpty()) return ProfileEditResult::Unchanged;
    bytes.erase(range.begin, range.Size());
    return ProfileEditResult::Changed;
}

// New bytes for a stretch of the old ones.
struct Replacement {
    ByteRange old;
    std::string bytes;
};

// All replacements in one pass. No two of them overlap.
std::string Replace(std::string_view bytes, std::vector<Replacement> replacements) {
    std::stable_sort(
        replacements.begin(), replacements.end(),
        [](const Replacement& one, const Replacement& other) { return one.old.begin < other.old.begin; });
    std::string result;
    size_t position = 0;
    for (const Replacement& replacement : replacements) {
        result.append(bytes.substr(position, replacement.old.begin - position)).append(replacement.bytes);
        position = replacement.old.end;
    }
    return result.append(bytes.substr(position));
}

Replacement ReplaceValue(const ProfileText& profile, const ProfileLine& entry, std::wstring_view value) {
    const ProfileEncoding& encoding = profile.Encoding();
    std::string newValue = encoding.Encode(value);
    // A value with blanks of its own takes the place of the old one and the blanks around it; in any other
    // place these would come on top with every write.
    const bool hasOwnBlanks = TrimName(value).size() != value.size();
    if (!entry.hasValue) {
        const size_t end = hasOwnBlanks ? entry.content.end : entry.name.end;
        return {{entry.name.end, end}, encoding.Encode(L"=").append(newValue)};
    }
    return {hasOwnBlanks ? entry.rawValue : entry.value, std::move(newValue)};
}

std::wstring FirstLineEnd(const ProfileText& profile) {
    const auto line = profile.Lines({profile.Encoding().MarkSize(), profile.Bytes().size()}).Next();
    std::wstring lineEnd;
    if (line) lineEnd = profile.Decode({line->content.end, line->whole.end});
    return lineEnd.empty() ? std::wstring(kUsualLineEnd) : lineEnd;
}

// Puts lines behind `previous`, or at the start of the text if there is no line before them.
Replacement InsertLines(const ProfileText& profile, const std::optional<ProfileLine>& previous,
                        const std::vector<std::wstring>& newLines) {
    std::wstring lineEnd = FirstLineEnd(profile);
    std::wstring text;
    size_t position = profile.Encoding().MarkSize();
    if (previous) {
        position = previous->whole.end;
        const ByteRange previousLineEnd = {previous->content.end, previous->whole.end};
        if (previousLineEnd.IsEmpty())
            text = lineEnd;
        else
            lineEnd = profile.Decode(previousLineEnd);
    }
    for (const std::wstring& line : newLines) text.append(line).append(lineEnd);
    return {{position, position}, profile.Encoding().Encode(text)};
}

// The last line of a section that is not blank, its head included.
std::optional<ProfileLine> FindLastLine(const ProfileText& profile, const ProfileSection& section) {
    std::optional<ProfileLine> last;
    ProfileLineReader lines = profile.Lines(section.whole);
    while (const std::optional<ProfileLine> line = lines.Next())
        if (line->kind != LineKind::Blank) last = line;
    return last;
}

std::optional<ProfileLine> FindLastLineOfFile(const ProfileText& profile) {
    std::optional<ProfileLine> last;
    ProfileLineReader lines = profile.Lines({profile.Encoding().MarkSize(), profile.Bytes().size()});
    while (const std::optional<ProfileLine> line = lines.Next()) last = line;
    return last;
}

// Lines that a section lacks; a section that the profile lacks gets its head before them.
Replacement AddLines(const ProfileText& profile, const std::optional<ProfileSection>& section,
                     std::wstring_view sectionName, std::vector<std::wstring> newLines) {
    if (section) return InsertLines(profile, FindLastLine(profile, *section), newLines);
    newLines.insert(newLines.begin(), ComposeHead(sectionName));
    return InsertLines(profile, FindLastLineOfFile(profile), newLines);
}

}  // namespace

ProfileEditResult EditProfile(std::string& bytes, const wchar_t* section, const wchar_t* key,
                              const wchar_t* value, const ProfileCodec& codec) {
    if (section == nullptr) return ProfileEditResult::Impossible;
    if (key != nullptr && value != nullptr) {
        const ProfileValue one{key, value};
        std::optional<std::string> edited = SetProfileValues(ProfileText(bytes, codec), section, {&one, 1});
        if (!edited) return ProfileEditResult::Impossible;
        if (*edited == bytes) return ProfileEditResult::Unchanged;
        bytes = *std::move(edited);
        return ProfileEditResult::Changed;
    }
    const ProfileText profile(bytes, codec);
    const std::optional<ProfileSection> found = profile.FindSection(TrimName(section));
    if (!found) return ProfileEditResult::Unchanged;
    if (key == nullptr) return Erase(bytes, found->whole);
    const std::optional<ProfileLine> entry = profile.FindEntry(*found, TrimName(key));
    return entry ? Erase(bytes, entry->whole) : ProfileEditResult::Unchanged;
}

std::optional<std::string> SetProfileValues(const ProfileText& profile, std::wstring_view section,
                                            std::span<const ProfileValue> values) {
    const std::wstring_view sectionName = TrimName(section);
    const std::optional<ProfileSection> found = profile.FindSection(sectionName);
    std::vector<Replacement> replacements;
    std::vector<std::wstring> newLines;
    for (const ProfileValue& wanted : values) {
        const std::wstring_view key = TrimName(wanted.key);
        if (!IsReadableEntry(key, wanted.value)) return std::nullopt;
        const std::optional<ProfileLine> entry = found ? profile.FindEntry(*found, key) : std::nullopt;
        if (entry)
            replacements.push_back(ReplaceValue(profile, *entry, wanted.value));
        else
            newLines.push_back(ComposeEntry(key, wanted.value));
    }
    if (!newLines.empty()) {
        if (!found && !IsReadableHead(sectionName)) return std::nullopt;
        replacements.push_back(AddLines(profile, found, sectionName, std::move(newLines)));
    }
    return Replace(profile.Bytes(), std::move(replacements));
}

}  // namespace vastrelline
