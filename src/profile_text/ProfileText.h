// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile_text/NameTable.h"
#include "profile_text/ProfileLines.h"

namespace vastrelline {

// The first section of a name: where its head stands and where its lines do.
struct ProfileSection {
    ByteRange whole;  // the head's line and all up to the next head
    ByteRange lines;  // the same without the head's line
};

// The contents of a profile, to be read without knowing of files. Names match without regard to case; the
// lines before the first head are the section of the empty name.
//
// Cost   grows with the contents once: they are gone through for their heads with the first question, and
// each
//        section for its keys with the first question for one of them; further questions take no longer in a
//        long profile than in a short one. What was found is kept without a lock: one thread asks at a time
class ProfileText {
public:
    // Errors   std::length_error for 2^32 - 1 bytes and more
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

    // Hands over one key after the other, for a section may have millions of them.
    void ForEachKey(std::wstring_view section, const std::function<void(const std::wstring& key)>& use) const;

    std::vector<std::wstring> ListEntries(std::wstring_view section) const;

    // Whether ListEntries would list any.
    bool HasEntries(std::wstring_view section) const;

private:
    // A section that was asked for, with the keys in it once one of them was.
    struct KnownSection {
        ProfileSection section;
        std::optional<NameTable> keys;
    };

    static constexpr size_t kNoHead = SIZE_MAX;

    uint64_t HashName(ByteRange nameInFile) const;
    bool AreSameName(ByteRange one, ByteRange other) const;
    ProfileLine LineAt(size_t position) const;
    NameTable TabulateNames(ByteRange range, LineKind kind) const;
    std::optional<size_t> FindHead(std::wstring_view name) const;
    size_t TextEnd() const;
    KnownSection& Know(size_t head) const;
    std::wstring ComposeListEntry(const ProfileLine& line) const;

    std::string bytes_;
    ProfileEncoding encoding_;
    mutable std::optional<NameTable> heads_;
    mutable std::map<size_t, KnownSection> known_;  // by where their heads stand
};

// A section or key argument without the blanks around it.
std::wstring_view TrimName(std::wstring_view name);

// The three reading operations on a profile's contents, with the meaning that GetPrivateProfileIntW,
// ...StringW and ...SectionW have on Windows: a text is cut to size - 1 characters, a list to size - 2; the
// result is the number of characters without the last terminator.
int32_t ReadProfileTextInt(const ProfileText& profile, const wchar_t* section, const wchar_t* key,
                           int32_t defaultValue);
uint32_t ReadProfileTextString(const ProfileText& profile, const wchar_t* section, const wchar_t* key,
                               const wchar_t* defaultValue, wchar_t* buffer, uint32_t size);
uint32_t ReadProfileTextSection(const ProfileText& profile, const wchar_t* section, wchar_t* buffer,
                                uint32_t size);

}  // namespace vastrelline
