// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "commands/Command.h"
#include "commands/RunOptions.h"

namespace vastrelline {

// Looks at frame and profile, processes the frame once, writes the picture and tells what ran.
class RunCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;

    // Errors   UsageError for options that do not go together and for a section that is not there; InputError
    //          for frame and profile; ProcessingError for a code other than 0. No picture is then left behind
    ExitCode Execute(CommandContext& context) override;

private:
    RunOptions options_;
};

}  // namespace vastrelline
