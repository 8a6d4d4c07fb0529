// SPDX-License-Identifier: Apache-2.0
#include "comparison/FolderPairs.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>
#include <utility>

#include "files/FileKind.h"
#include "messages/ToolError.h"
#include "platform/PathText.h"
#include "platform/Reason.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

std::set<std::string> FramesIn(const std::string& folder) {
    std::set<std::string> names;
    std::error_code error;
    fs::recursive_directory_iterator entries(PathOf(folder), error);
    for (; !error && entries != fs::recursive_directory_iterator(); entries.increment(error)) {
        const fs::path& entry = entries->path();
        const bool isHidden = entry.filename().string().starts_with('.');
        std::error_code ignored;
        if (entries->is_directory(ignored)) {
            if (isHidden) entries.disable_recursion_pending();
        } else if (!isHidden && FileKindOf(entry.string()) != FileKind::Other) {
            names.insert(entry.lexically_relative(PathOf(folder)).generic_string());
        }
    }
    if (error) throw InputError(folder, "cannot be read: " + DescribeReason(error));
    if (names.empty())
        throw InputError(folder, "holds no frame", "frames end in .raw, .pgm, .png, .tif or .bmp");
    return names;
}

std::string WithoutEnding(const std::string& name) {
    return PathOf(name).replace_extension().generic_string();
}

std::map<std::string, std::vector<std::string>> ByStem(const std::set<std::string>& names,
                                                       const std::set<std::string>& others) {
    std::map<std::string, std::vector<std::string>> byStem;
    for (const std::string& name : names)
        if (!others.contains(name)) byStem[WithoutEnding(name)].push_back(name);
    return byStem;
}

}  // namespace

std::vector<FolderPair> ListFolderPairs(const std::string& first, const std::string& second) {
    const std::set<std::string> firstNames = FramesIn(first);
    const std::set<std::string> secondNames = FramesIn(second);
    const auto inFirst = [&](const std::string& name) {
        return (PathOf(first) / PathOf(name)).make_preferred().string();
    };
    const auto inSecond = [&](const std::string& name) {
        return (PathOf(second) / PathOf(name)).make_preferred().string();
    };
    std::vector<FolderPair> pairs;
    for (const std::string& name : firstNames)
        if (secondNames.contains(name)) pairs.push_back({name, inFirst(name), inSecond(name)});

    auto lonelySecond = ByStem(secondNames, firstNames);
    for (const auto& [stem, names] : ByStem(firstNames, secondNames)) {
        const auto other = lonelySecond.find(stem);
        if (names.size() == 1 && other != lonelySecond.end() && other->second.size() == 1) {
            pairs.push_back({names.front(), inFirst(names.front()), inSecond(other->second.front())});
            lonelySecond.erase(other);
        } else {
            for (const std::string& name : names) pairs.push_back({name, inFirst(name), {}});
        }
    }
    for (const auto& [stem, names] : lonelySecond)
        for (const std::string& name : names) pairs.push_back({name, {}, inSecond(name)});
    std::sort(pairs.begin(), pairs.end(),
              [](const FolderPair& a, const FolderPair& b) { return a.name < b.name; });
    return pairs;
}

}  // namespace vastrelline
