// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "ParsedTree.h"

namespace vastrelline {

// From each name to the names that it points at.
using Graph = std::map<std::string, std::set<std::string>>;

// The quoted includes of each file, as written: in this house, paths below the tree's top folder.
Graph MakeIncludeGraph(const ParsedTree& tree);

// The same arrows between groups of names; those within one group are left out.
Graph GroupGraph(const Graph& graph, const std::function<std::string(const std::string&)>& groupOf);

// All that is reached from a name, itself included.
std::set<std::string> FindReached(const Graph& graph, const std::string& start);

// A line such as "a -> b -> a" for each arrow that closes a cycle.
std::vector<std::string> FindCycles(const Graph& graph);

}  // namespace vastrelline
