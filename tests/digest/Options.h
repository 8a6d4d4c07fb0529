// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "MachineState.h"

namespace vastrelline::digest {

struct DigestOptions {
    enum class Task { Digest, List, Runs, Show, Help };
    Task task = Task::Digest;
    std::string group;              // Runs, Show
    size_t run = 0;                 // Show
    std::vector<std::string> only;  // these groups; empty: all
    std::string check;              // file of the expected list
    std::string write;              // file that gets the list
    std::string folder;             // for the files of the runs; empty: the system's for temporary files
    std::string locale;
    std::string limit;
    size_t threads = 1;
    HostHabits habits;
};

// The lines of the program's help.
extern const char* const kDigestHelp;

// Reads the words of a command line, without the program's name. What is not understood throws
// std::invalid_argument with a line for people.
DigestOptions ReadOptions(const std::vector<std::string>& words);

}  // namespace vastrelline::digest
