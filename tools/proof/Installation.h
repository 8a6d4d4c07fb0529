// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vastrelline {

// Where the parts of an installation lie, all of them found from the tool's own file.
struct Installation {
    std::string prefix;
    std::string list;      // of the installed files
    std::string manifest;  // that the build is held to
    std::string forms;     // the library whose forms can be limited
    bool isBuildTree = false;
};

// program   the tool's file
Installation FindInstallation(const std::string& program);

enum class FileState : uint8_t { AsInstalled, Changed, Missing, Unreadable };

// "as installed", "changed", "missing", "cannot be read"
const char* FileStateName(FileState state);

struct CheckedFile {
    std::string path;  // below the prefix
    FileState state = FileState::AsInstalled;
};

// Compares the files of an installation with their list.
//
// Errors   InputError: the list is missing or unreadable, or a line of it is none
std::vector<CheckedFile> CheckInstalledFiles(const Installation& installation);

// Whether a path, links followed, is one of the listed files.
bool IsOfInstallation(const Installation& installation, const std::vector<CheckedFile>& files,
                      const std::string& path);

}  // namespace vastrelline
