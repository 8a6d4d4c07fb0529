// SPDX-License-Identifier: Apache-2.0
#include "commands/CompletionCommand.h"

#include <CLI/CLI.hpp>
#include <vector>

#include "completion/CompletionScript.h"

namespace vastrelline {

std::string_view CompletionCommand::Examples() const {
    return "  vastrelline completion bash > ~/.local/share/bash-completion/completions/vastrelline\n"
           "  vastrelline completion fish > ~/.config/fish/completions/vastrelline.fish\n"
           "  vastrelline completion powershell | Out-String | Invoke-Expression\n";
}

std::string_view CompletionCommand::Notes() const {
    return "The script completes commands, options, their values and files, and sections and keys of the "
           "profile\n"
           "that stands in the line. Its first lines say how to take it into the running shell.\n";
}

void CompletionCommand::AddOptions(CLI::App& command) {
    command.add_option("SHELL", shell_, "The shell")
        ->required()
        ->type_name("")
        ->check(CLI::IsMember(std::vector<std::string>(kShells.begin(), kShells.end())));
}

ExitCode CompletionCommand::Execute(CommandContext& context) {
    context.report << CompletionScript(shell_);
    return ExitCode::Well;
}

}  // namespace vastrelline
