// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace vastrelline {

// Texts of files by their path below one folder, with '/' between folders.
using SourceTree = std::map<std::string, std::string>;

// The text files of this project below one of its folders.
// Left out: what a build or a run leaves behind, what git keeps, and files that hold a zero byte.
SourceTree ReadTreeFiles(const std::filesystem::path& folder);

}  // namespace vastrelline
