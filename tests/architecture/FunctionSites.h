// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "SourceText.h"

namespace vastrelline {

// A place that declares or defines a function, outside of other functions' bodies. Constructors, destructors
// and operators are not listed.
struct FunctionSite {
    std::string name;
    std::string record;  // the class or struct; empty for a free function
    size_t nameToken;
    size_t bodyBegin;  // tokens of the body with its braces; none if both are equal
    size_t bodyEnd;
    bool hasParameters;
};

struct FunctionSites {
    std::vector<FunctionSite> sites;
    bool hasCode;     // a body anywhere, be it a constructor's
    bool isBalanced;  // else a bracket is without its partner, and what follows it may be missing
};

// Reads declarations by their outer form: a name before a parameter list, where a namespace or a class lists
// its members. It knows nothing of types, and takes a variable with its initialiser in round brackets for a
// function.
FunctionSites FindFunctionSites(const std::vector<Token>& tokens);

}  // namespace vastrelline
