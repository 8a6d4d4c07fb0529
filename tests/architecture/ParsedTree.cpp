// SPDX-License-Identifier: Apache-2.0
#include "ParsedTree.h"

#include <set>
#include <utility>

#include "support/SourceTree.h"

namespace vastrelline {

namespace {

bool IsSource(const std::string& path) {
    static const std::set<std::string> endings{".h", ".c", ".cpp", ".inl"};
    const size_t dot = path.rfind('.');
    return dot != std::string::npos && endings.contains(path.substr(dot));
}

}  // namespace

ParsedTree ParseTree(const SourceTree& tree) {
    ParsedTree parsed;
    for (const auto& [path, text] : tree) {
        if (!IsSource(path)) continue;
        SourceText source = ReadSourceText(text);
        FunctionSites functions = FindFunctionSites(source.tokens);
        parsed.emplace(path, ParsedFile{std::move(source), std::move(functions)});
    }
    return parsed;
}

const SourceTree& OwnTree(const std::string& folder) {
    static std::map<std::string, SourceTree> trees;
    const auto known = trees.find(folder);
    if (known != trees.end()) return known->second;
    return trees[folder] = ReadTreeFiles(SourceTreeFolder() / folder);
}

const ParsedTree& OwnParsedTree(const std::string& folder) {
    static std::map<std::string, ParsedTree> trees;
    const auto known = trees.find(folder);
    if (known != trees.end()) return known->second;
    return trees[folder] = ParseTree(OwnTree(folder));
}

std::string FolderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "" : path.substr(0, slash);
}

std::string StemOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    const std::string leaf = slash == std::string::npos ? path : path.substr(slash + 1);
    return leaf.substr(0, leaf.rfind('.'));
}

}  // namespace vastrelline
