#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile_text/ProfileLines.h"

namespace vastrelline {

// The first section of a name: where its head stands and where its lines do.
struct ProfileSection {
    ByteRange whole;  // the head's line and all up to the next head
    ByteRange lines;  // the same without the head's line
};

// The contents of a profile, to be read without knowing of files. Names match without regard to case; the
// lines before the first head are the section of the empty name.
class ProfileText {
public:
    explicit ProfileText(std::string bytes, const ProfileCodec& codec = kUtf8Codec);

    const std::string& Bytes() const { return bytes_; }
    const ProfileEncoding& Encoding() const { return encoding_; }

    std::wstring Decode(ByteRange range) const;
    bool IsNamed(ByteRange nameInFile, std::wstring_view name) const;  // whatever the case of its letters
    std::optional<ProfileSection> FindSection(std::wstring_view name) const;
    std::optional<ProfileLine> FindEntry(const ProfileSection& section, std::wstring_view key) const;
    ProfileLineReader Lines(ByteRange range) const;

    // Without the blanks around, with quotes. Nothing: no such section or key, or a key without equals sign.
    std::optional<std::wstring> FindValue(std::wstring_view section, std::wstring_view key) const;

    std::vector<std::wstring> ListSections() const;
    std::vector<std::wstring> ListKeys(std::wstring_view section) const;
    std::vector<std::wstring> ListEntries(std::wstring_view section) const;

private:
    std::string bytes_;
    ProfileEncoding encoding_;
};

// A section or key argument without the blanks around it.
std::wstring_view TrimName(std::wstring_view name);

// The three reading operations, as platform/ProfileFile.h tells of them, on a profile's contents.
int32_t ReadProfileTextInt(const ProfileText& profile, const wchar_t* section, const wchar_t* key,
                           int32_t defaultValue);
uint32_t ReadProfileTextString(const ProfileText& profile, const wchar_t* section, const wchar_t* key,
                               const wchar_t* defaultValue, wchar_t* buffer, uint32_t size);
uint32_t ReadProfileTextSection(const ProfileText& profile, const wchar_t* section, wchar_t* buffer,
                                uint32_t size);

}  // namespace vastrelline
