// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "commands/BatchOptions.h"
#include "commands/Command.h"

namespace vastrelline {

// Processes all frames of files, folders and patterns with one section, several at a time.
class BatchCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;

    // Errors   UsageError, InputError, OutputError before the first frame; what frames meet makes the code
    ExitCode Execute(CommandContext& context) override;

private:
    BatchOptions options_;
};

}  // namespace vastrelline
