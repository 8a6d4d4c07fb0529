// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "commands/Command.h"

namespace vastrelline {

// Prints a script for a shell.
class CompletionCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;

private:
    std::string shell_;
};

}  // namespace vastrelline
