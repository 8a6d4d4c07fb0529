// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Findings.h"
#include "ParsedTree.h"

namespace vastrelline {

// Functions and member functions that a header declares and no file of the tree calls, by their name
// ("Name" or "Record::Name").
//
// A call is the name in any other place than a declaration, a definition or the function's own body, in a
// file that sees the header; an .inl sees what the files that include it see. A name behind '.' or '->' calls
// no free function, and one behind "Other::" calls Other's if that declares the name. Overloads count as one
// function, and so do members of equal names in different records as long as nothing tells them apart: what
// is reported has no caller, but not all that has none is reported.
Findings FindUncalledFunctions(const ParsedTree& tree);

}  // namespace vastrelline
