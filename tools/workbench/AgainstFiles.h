// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <vector>

namespace vastrelline {

// A file that the desk may be compared with because the command line names it: a page can name no other.
struct AgainstFile {
    std::string path;
    bool isLibrary = false;  // else a profile
};

// What the files are: a library is what its first bytes say to be a program of Linux or Windows, all else a
// profile.
//
// Errors   InputError: missing, no regular file, unreadable
std::vector<AgainstFile> ListAgainstFiles(std::span<const std::string> paths);

}  // namespace vastrelline
