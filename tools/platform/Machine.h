// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace vastrelline {

// What this machine calls itself; empty where it does not tell.
struct MachineNames {
    std::string host;
    std::string system;        // "Linux", "Windows"
    std::string release;       // of the system
    std::string architecture;  // "x86_64"
    std::string processor;     // its maker's name for it
};

MachineNames AskMachine();

}  // namespace vastrelline
