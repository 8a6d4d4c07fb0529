// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>

#include "FunctionSites.h"
#include "SourceText.h"
#include "TreeFiles.h"

namespace vastrelline {

struct ParsedFile {
    SourceText text;
    FunctionSites functions;
};

// The files in C and C++ of a tree, by their path.
using ParsedTree = std::map<std::string, ParsedFile>;

ParsedTree ParseTree(const SourceTree& tree);

// A top folder of this project, such as "src", read once.
const SourceTree& OwnTree(const std::string& folder);
const ParsedTree& OwnParsedTree(const std::string& folder);

std::string FolderOf(const std::string& path);  // empty for a file of the top folder
std::string StemOf(const std::string& path);    // the name without folders and ending

}  // namespace vastrelline
