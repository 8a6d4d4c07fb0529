#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace vastrelline {

// The text files of this project below one of its folders, by their path below it with '/' between folders.
// Left out: what a build or a run leaves behind, what git keeps, and files that hold a zero byte.
std::map<std::string, std::string> ReadTreeFiles(const std::filesystem::path& folder);

}  // namespace vastrelline
