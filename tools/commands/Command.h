// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "library/ExportRequest.h"
#include "messages/ExitCode.h"
#include "messages/Messages.h"

namespace CLI {
class App;
}

namespace vastrelline {

// What a command works with.
struct CommandContext {
    std::ostream& report;  // results: standard output
    Messages& messages;    // words for people: standard error
    const ExportCaller& callExport;
    bool wantsJson = false;        // the report is one JSON object, and nothing else
    std::string command;           // its whole name: "profile lint"
    std::string commandLine = {};  // what was typed, as a shell takes it again
};

// One command of the tool. Its name and its line in the overview stand in the command table, from which help,
// completion and the manual page are made.
class Command {
public:
    Command() = default;
    virtual ~Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    Command(Command&&) = delete;
    Command& operator=(Command&&) = delete;

    // Commands that a person may copy: two blanks, one command, a line end; a longer one goes on in the next
    // line behind a backslash. Three of them are what the command says when it stands alone.
    virtual std::string_view Examples() const = 0;

    // What the help says below the options; may be empty, ends with a line end.
    virtual std::string_view Notes() const { return {}; }

    // Adds arguments and options, bound to this object.
    virtual void AddOptions(CLI::App& command) = 0;

    // Errors   ToolError; std::bad_alloc; anything else ends the tool with ExitCode::Processing
    virtual ExitCode Execute(CommandContext& context) = 0;
};

}  // namespace vastrelline
