// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "commands/CommandTable.h"

namespace vastrelline {

// Three commands for whoever meets the tool for the first time.
inline constexpr std::string_view kFirstSteps =
    "Examples:\n"
    "  vastrelline phantom --out tooth_1300x1668.raw\n"
    "  vastrelline run tooth_1300x1668.raw --profile dental.ini --section General --out tooth.png\n"
    "  vastrelline compare before.raw after.raw --size 1300x1668\n";

// The command table as a parser of command lines, with one object for each command. What is to be known of
// the options (for help, completion, the manual page) is asked of the parser.
class CommandTree {
public:
    struct Branch {
        const CommandEntry* entry;
        std::unique_ptr<Command> command;
        CLI::App* app;  // owned by the tree
    };

    CommandTree();
    ~CommandTree();
    CommandTree(const CommandTree&) = delete;
    CommandTree& operator=(const CommandTree&) = delete;
    CommandTree(CommandTree&&) = delete;
    CommandTree& operator=(CommandTree&&) = delete;

    CLI::App& Root() { return *root_; }
    const CLI::App& Root() const { return *root_; }
    const std::vector<Branch>& Branches() const { return branches_; }

    // The branch of the command that was parsed; null before, and where the line named none.
    const Branch* Parsed() const;

    // --quiet and --json of the parsed command.
    bool IsQuiet() const { return isQuiet_; }
    bool WantsJson() const { return wantsJson_; }

    // The names that may stand behind `group`; of the empty group those of commands and groups.
    static std::vector<std::string> NamesIn(std::string_view group);

private:
    void AddBranch(const CommandEntry& entry);
    CLI::App& GroupApp(std::string_view name);

    std::unique_ptr<CLI::App> root_;
    std::vector<Branch> branches_;
    bool isQuiet_ = false;
    bool wantsJson_ = false;
};

}  // namespace vastrelline
