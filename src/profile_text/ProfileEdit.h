// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "profile_text/ProfileText.h"

namespace vastrelline {

enum class ProfileEditResult {
    Unchanged,  // the profile says that already
    Changed,
    Impossible,  // such a line could not be read back, as with a line end in the value; nothing was done
};

// Sets one key in the contents of a profile.
//
// key found      the value is replaced in its place; the key's spelling stays
// key missing    a new line behind the section's last line that is not blank
// section missing  head and line at the end of the file
// null value     takes the key's line away; null key: the section with its head; nothing there: unchanged
// New lines end as the line before them does, in an empty file with CR LF.
ProfileEditResult EditProfile(std::string& bytes, const wchar_t* section, const wchar_t* key,
                              const wchar_t* value, const ProfileCodec& codec = kUtf8Codec);

struct ProfileValue {
    std::wstring key;
    std::wstring value;
};

// The bytes of a profile with several keys of a section set, in one pass: the same as EditProfile gives for
// one after the other. Nothing: one of them is Impossible.
//
// values   of keys that differ from one another
std::optional<std::string> SetProfileValues(const ProfileText& profile, std::wstring_view section,
                                            std::span<const ProfileValue> values);

}  // namespace vastrelline
