#include "profile_text/ProfileEdit.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

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

ProfileEditResult ReplaceValue(std::string& bytes, const ProfileText& profile, const ProfileLine& entry,
                               std::wstring_view value) {
    const ProfileEncoding& encoding = profile.Encoding();
    const std::string newValue = encoding.Encode(value);
    // A value with blanks of its own takes the place of the old one and the blanks around it; in any other
    // place these would come on top with every write.
    const bool hasOwnBlanks = TrimName(value).size() != value.size();
    if (!entry.hasValue) {
        const size_t end = hasOwnBlanks ? entry.content.end : entry.name.end;
        bytes.replace(entry.name.end, end - entry.name.end, encoding.Encode(L"=") + newValue);
        return ProfileEditResult::Changed;
    }
    const ByteRange old = hasOwnBlanks ? entry.rawValue : entry.value;
    if (bytes.compare(old.begin, old.Size(), newValue) == 0) return ProfileEditResult::Unchanged;
    bytes.replace(old.begin, old.Size(), newValue);
    return ProfileEditResult::Changed;
}

std::wstring FirstLineEnd(const ProfileText& profile) {
    const auto line = profile.Lines({profile.Encoding().MarkSize(), profile.Bytes().size()}).Next();
    std::wstring lineEnd;
    if (line) lineEnd = profile.Decode({line->content.end, line->whole.end});
    return lineEnd.empty() ? std::wstring(kUsualLineEnd) : lineEnd;
}

// Puts lines behind `previous`, or at the start of the text if there is no line before them.
void InsertLines(std::string& bytes, const ProfileText& profile, const std::optional<ProfileLine>& previous,
                 std::initializer_list<std::wstring> newLines) {
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
    bytes.insert(position, profile.Encoding().Encode(text));
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

}  // namespace

ProfileEditResult EditProfile(std::string& bytes, const wchar_t* section, const wchar_t* key,
                              const wchar_t* value, const ProfileCodec& codec) {
    if (section == nullptr) return ProfileEditResult::Impossible;
    const ProfileText profile(bytes, codec);
    const std::wstring_view sectionName = TrimName(section);
    const std::optional<ProfileSection> found = profile.FindSection(sectionName);
    if (key == nullptr) return found ? Erase(bytes, found->whole) : ProfileEditResult::Unchanged;

    const std::wstring_view keyName = TrimName(key);
    const std::optional<ProfileLine> entry = found ? profile.FindEntry(*found, keyName) : std::nullopt;
    if (value == nullptr) return entry ? Erase(bytes, entry->whole) : ProfileEditResult::Unchanged;

    if (!IsReadableEntry(keyName, value)) return ProfileEditResult::Impossible;
    if (entry) return ReplaceValue(bytes, profile, *entry, value);
    if (found) {
        InsertLines(bytes, profile, FindLastLine(profile, *found), {ComposeEntry(keyName, value)});
        return ProfileEditResult::Changed;
    }
    if (!IsReadableHead(sectionName)) return ProfileEditResult::Impossible;
    InsertLines(bytes, profile, FindLastLineOfFile(profile),
                {ComposeHead(sectionName), ComposeEntry(keyName, value)});
    return ProfileEditResult::Changed;
}

}  // namespace vastrelline
