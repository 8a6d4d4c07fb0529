// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "Findings.h"
#include "ParsedTree.h"

namespace vastrelline {

// A name with its header, its .cpp and its forms for instruction sets, operating systems and schedules. It
// lies where its header does. An .inl is a part of what includes it and no module.
struct Module {
    std::set<std::string> files;
    std::set<std::string> includes;   // of its files
    std::set<std::string> functions;  // of its header, or of all files if it has none
    bool hasCode = false;             // else it holds records and constants only
};

// By path without ending, such as "stages/gamma/GammaStage".
using Modules = std::map<std::string, Module>;

Modules ListModules(const ParsedTree& tree);

// Files of tests or benchmarks that stand for a module of another name, and why they do.
using Coverings = std::map<std::string, std::vector<std::string>>;

// Every module with code has tests/<its path>Test.cpp, or stands in `covered` with the tests that exercise
// it. These exist, and each names the module's header or one of its functions, or includes the header of a
// module that stands on it, directly or through others of their folder.
std::vector<std::string> FindUntestedModules(const Modules& modules, const ParsedTree& tests,
                                             const Coverings& covered);

// A tree of files <module path><suffix>, such as tests.
struct Mirror {
    std::string suffix;                       // such as "Test.cpp"
    std::set<std::string> ownFolders;         // top folders that mirror nothing
    std::set<std::string> outerFolders = {};  // whose modules are reached through the public header
};

// A file lies in the folder of the module that it is named for, which is the one with the longest name that
// its own begins with. A file named for none includes a header of its folder. A last folder "posix" or
// "windows" may be the mirror's own: what it holds runs on such systems only.
Findings FindStrayFiles(const Modules& modules, const ParsedTree& files, const Mirror& mirror);

}  // namespace vastrelline
