// SPDX-License-Identifier: Apache-2.0
#include "TreeFiles.h"

#include <fstream>
#include <iterator>
#include <set>

namespace vastrelline {

SourceTree ReadTreeFiles(const std::filesystem::path& folder) {
    static const std::set<std::filesystem::path> leftOut{".git", "build", "out"};
    SourceTree texts;
    std::filesystem::recursive_directory_iterator entries(folder);
    for (auto entry = begin(entries); entry != end(entries); ++entry) {
        if (entry.depth() == 0 && leftOut.contains(entry->path().filename())) {
            entry.disable_recursion_pending();
            continue;
        }
        if (!entry->is_regular_file()) continue;
        std::ifstream file(entry->path(), std::ios::binary);
        std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        if (text.find('\0') != std::string::npos) continue;
        texts.emplace(entry->path().lexically_relative(folder).generic_string(), std::move(text));
    }
    return texts;
}

}  // namespace vastrelline
