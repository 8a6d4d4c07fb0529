// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

namespace vastrelline {

// A backup's name with "T" in place of its date and time of day, if these have the right form.
inline std::string MaskStamp(const std::string& name) {
    static const std::regex stamp("^[0-9]{4}[01][0-9][0-3][0-9]_[0-2][0-9][0-5][0-9][0-6][0-9]_");
    return std::regex_replace(name, stamp, "T_");
}

// The files of a folder whose masked name is this one.
inline std::vector<std::filesystem::path> BackupsNamed(const std::filesystem::path& folder,
                                                       const std::string& masked) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (MaskStamp(entry.path().filename().string()) == masked) paths.push_back(entry.path());
    return paths;
}

// The masked names of everything in a folder, sorted.
inline std::vector<std::string> MaskedNames(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(MaskStamp(entry.path().filename().string()));
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace vastrelline
