// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "platform/WaitBudget.h"

namespace vastrelline {

// Files are read and written as a whole only. Other programs write the same files, and few of them as one
// step: a version counts as whole when nobody has touched it for this long.
inline constexpr std::chrono::milliseconds kQuietTime{20};

// Many editors cut a file first and fill it then, and a busy disk holds them up in between.
inline constexpr std::chrono::milliseconds kQuietTimeOfEmptyFile{200};

enum class ReadResult {
    Done,
    Missing,  // nothing stands there, or nothing can
    NoFile,   // what stands there may not be opened for reading, is no regular file or is too large
    Failed,   // the system could not do it now: no free file handle, no memory of its own, a failing read
};

// All bytes of a file as one save left them. A version that is not quiet yet may be half of what its writer
// has in mind: it is read again until it is, or until the budget is spent; then what is there counts. What
// this process has put there itself needs no wait.
//
// largestSize  a file of more bytes is none
// bytes        Done: all of them. Otherwise without meaning
// Errors       memory that runs out throws
[[nodiscard]] ReadResult ReadWholeFile(const std::wstring& path, size_t largestSize, WaitBudget& wait,
                                       std::string& bytes);

// Writes a file so that it appears under its name only when it is whole: a full disk or a crash leaves what
// stood there before. An existing file is replaced. Where nothing can take its place (a folder that takes no
// new file, a viewer that holds it), or it has several names which have to stay one file, it is written as it
// stands, and emptied if that fails half way.
//
// POSIX     the file keeps its mode and owner, and a symbolic link is followed
// Devices   the null device, a terminal or a pipe with a reader takes the bytes
// Returns   false, and what the name stood for is as it was: a missing folder, a folder as the path, a file
//           that may not be written, no room, another run that writes the same file for too long
[[nodiscard]] bool SaveWholeFile(const std::wstring& path, const std::string& bytes);

// Puts new bytes in the place of those that a file holds, if these still are the ones that were read before.
// No moment leaves less than one whole version, neither on a full disk nor after a crash, and no save of
// another program is lost: where one comes in between, it stays.
//
// oldBytes  what the file has to hold, quiet. What this process has put there itself counts as quiet
// wait      how long to wait for another writer of the file
// Returns   true: the file holds the new bytes. False: it was left as it is, also because it is missing, may
//           not be written, is no regular file, or its folder takes no new file
// POSIX     mode and owner stay, and a symbolic link is followed
// Errors    memory that runs out throws, and the file is as it was
[[nodiscard]] bool ReplaceWholeFile(const std::wstring& path, const std::string& oldBytes,
                                    const std::string& newBytes, WaitBudget& wait);

// Removes what a killed process may have left beside a file that it was about to save or to replace. What
// another process is still busy with stays.
void RemoveLeftover(const std::wstring& path);

}  // namespace vastrelline
