// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

#include "platform/posix/FileDescriptor.h"

namespace vastrelline {

// Where a file stands: its folder, held open, and its name there. Names are looked up from the open folder,
// so that two of them lie in one folder whatever happens to the path.
struct FilePlace {
    FileDescriptor folder;  // not open: there is no such folder
    std::string name;       // empty: the path names a folder
};

// The place at the end of the symbolic links that a path names, also when nothing stands there yet.
FilePlace FindPlace(const std::string& path);

// What stands at a name, without following a link. Nothing: errno tells why.
std::optional<struct stat> StatusAt(const FileDescriptor& folder, const std::string& name);

// Whether a regular file may be written: by somebody as its mode has it, and by this process.
bool IsWritable(const FilePlace& place, const struct stat& status);

// The new name in a folder has to reach the disk as well. Not every file system can be asked for that.
void FlushFolder(const FileDescriptor& folder);

}  // namespace vastrelline
