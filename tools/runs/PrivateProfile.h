// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "files/PrivateFolder.h"
#include "profile/ProfileFile.h"

namespace vastrelline {

// The log that a run leaves in the folder of its profile.
inline constexpr const char* kLogLeaf = "ExtraOralLog.txt";

struct KeyEdit {
    std::string key;    // UTF-8
    std::string value;  // UTF-8
};

// A copy of a profile in a folder of its own, for a run to read and to write to: a run of the configured
// family stores the sensor's values in its profile and the log beside it. The original stays byte for byte.
class PrivateProfile {
public:
    // edits    set in the section; one that could not be read back is left out
    // Errors   OutputError
    PrivateProfile(const ProfileFile& original, std::string_view section, std::span<const KeyEdit> edits);

    const std::string& Path() const { return path_; }

    // The log that runs have left; empty if there is none.
    std::string ReadLog() const;

private:
    PrivateFolder folder_;
    std::string path_;
};

// The bytes of the log beside a profile; empty if there is none.
std::string ReadLogBeside(const std::string& profilePath);

}  // namespace vastrelline
