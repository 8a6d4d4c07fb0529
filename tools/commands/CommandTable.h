// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "commands/Command.h"

namespace vastrelline {

// A row of the tool's table of commands.
struct CommandEntry {
    std::string_view group;  // "profile" for `vastrelline profile lint`; empty: none
    std::string_view name;
    std::string_view summary;  // one line of the overview, without a full stop
    bool hasJson;              // knows --json
    std::unique_ptr<Command> (*make)();
};

// A word in front of the names of several commands.
struct CommandGroup {
    std::string_view name;
    std::string_view summary;
};

// In the order of the overview.
std::span<const CommandEntry> CommandTable();
std::span<const CommandGroup> CommandGroups();

}  // namespace vastrelline
