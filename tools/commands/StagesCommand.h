// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "commands/Command.h"
#include "commands/RunOptions.h"

namespace vastrelline {

// Runs a section on a frame and shows the frame after every stage: pictures, a table, a sheet of all.
class StagesCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;

    // Errors   as RunCommand; OutputError for the folder. Nothing is then left behind
    ExitCode Execute(CommandContext& context) override;

private:
    RunOptions options_;
    std::string folder_;
};

}  // namespace vastrelline
