// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace vastrelline {

// Two files of one name; a path is empty where only the other folder has such a file.
struct FolderPair {
    std::string name;  // below both folders
    std::string first;
    std::string second;

    bool operator==(const FolderPair&) const = default;
};

// The frames of two folders and of the folders in them, by their names below them; what begins with a dot is
// passed over. Names that only one folder has go together if they differ in their ending alone, and are the
// only ones that do: "a.raw" and "a.png".
//
// result   in the order of the names
// Errors   InputError: a folder that cannot be read or holds no frame
std::vector<FolderPair> ListFolderPairs(const std::string& first, const std::string& second);

}  // namespace vastrelline
