// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/posix/FileDescriptor.h"

namespace vastrelline {

// What tells one version of a file from the next: which file it is, when it was changed, and its size.
struct FileVersion {
    dev_t device = 0;
    ino_t number = 0;
    std::chrono::nanoseconds changed{0};  // since the start of 1970
    off_t size = 0;

    bool operator==(const FileVersion& other) const = default;
    bool IsSameFile(const FileVersion& other) const {
        return device == other.device && number == other.number;
    }
};

FileVersion VersionOf(const struct stat& status);
std::optional<FileVersion> VersionOf(const FileDescriptor& file);

// How long to wait until the version that an open file has now may be taken for a whole one; 0 if it may.
//
// version  of the file. One that this process has put in place itself is whole at once. An empty one is what
//          many editors make first: it has to be quiet for longer. One that somebody has open for writing is
//          not whole yet, unless the last change is so old that it is just kept open
// Clocks   a stamp from the future tells nothing, so only open writers count then. Old kernels stamp up to
//          ten milliseconds too early, which kQuietTime has room for
std::chrono::nanoseconds TimeUntilWhole(const FileDescriptor& file, const FileVersion& version);

// Whether a version that is not whole yet is more than just young: somebody has cut it and not filled it, or
// has it open for writing.
bool IsUnfinished(const FileDescriptor& file, const FileVersion& version);

// Remembers a version that this process has put in place as a whole. Only the last few are kept.
void RememberAsOwn(const FileVersion& version);
bool IsOwn(const FileVersion& version);

// Whether a file holds just these bytes. Needs no memory. False as well if it cannot be read.
bool HoldsBytes(const FileDescriptor& file, const std::string& bytes);

}  // namespace vastrelline
