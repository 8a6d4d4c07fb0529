// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "Findings.h"
#include "ParsedTree.h"

namespace vastrelline {

// The functions `...Variants()` of the headers: each lists the forms of one kernel.
std::vector<std::string> ListVariantLists(const ParsedTree& sources);

// The lists that no file of a tree walks, by their name. `place` names the tree in the sentences.
Findings FindUnwalkedLists(const std::vector<std::string>& lists, const ParsedTree& tree,
                           const std::string& place);

}  // namespace vastrelline
