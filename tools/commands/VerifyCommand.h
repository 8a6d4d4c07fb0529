// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "commands/Command.h"
#include "commands/VerifyOptions.h"

namespace vastrelline {

// Runs the entries of a manifest and tells whether each gives, stage by stage, the pixels that it gave when
// the manifest was made; adds entries to one; takes new results for right, for a reason.
class VerifyCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;

    // Errors   UsageError for options that do not go together; InputError for the manifest and, with --add,
    // for
    //          frames and profiles. What is wrong with an entry is in the report and decides the exit code
    ExitCode Execute(CommandContext& context) override;

private:
    VerifyOptions options_;
};

}  // namespace vastrelline
