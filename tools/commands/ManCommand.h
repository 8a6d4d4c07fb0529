// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "commands/Command.h"

namespace vastrelline {

// Prints the manual page.
class ManCommand : public Command {
public:
    std::string_view Examples() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;
};

}  // namespace vastrelline
