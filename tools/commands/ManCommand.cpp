// SPDX-License-Identifier: Apache-2.0
#include "commands/ManCommand.h"

#include "commands/CommandTree.h"
#include "commands/ManualPage.h"

namespace vastrelline {

std::string_view ManCommand::Examples() const {
    return "  vastrelline man | man -l -\n"
           "  vastrelline man | mandoc -T html > vastrelline.html\n"
           "  vastrelline man > ~/.local/share/man/man1/vastrelline.1\n";
}

void ManCommand::AddOptions(CLI::App& /*command*/) {}

ExitCode ManCommand::Execute(CommandContext& context) {
    const CommandTree tree;
    context.report << MakeManualPage(tree);
    return ExitCode::Well;
}

}  // namespace vastrelline
