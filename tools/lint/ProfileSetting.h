// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "lint/FindingSink.h"
#include "profile/ProfileFile.h"
#include "profile_text/ProfileEdit.h"

namespace vastrelline {

// One key that was set.
struct SetLine {
    std::string key;
    size_t line = 0;                 // in the new profile
    std::optional<std::string> old;  // nothing: the key is new
    std::string value;
    bool isChanged = false;
};

// A profile with keys of one section set, and what is to be said about the lines concerned.
struct ProfileSetting {
    std::string bytes;
    std::vector<SetLine> lines;
    std::vector<LintFinding> findings;  // about these lines
    bool areAllRead = true;             // no run reads at least one of them
};

// Sets values and keeps every other byte. A section that is missing comes to the end of the profile.
//
// values   of keys that differ from one another
// Errors   UsageError: such a line could not be read back
ProfileSetting SetInProfile(const ProfileFile& file, const std::string& section,
                            std::span<const ProfileValue> values);

}  // namespace vastrelline
