// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "commands/Command.h"
#include "commands/CompareOptions.h"

namespace vastrelline {

// Tells whether two frames, or the frames of two folders, are equal, and if not how much they differ and
// where. ExitCode::Findings for different ones; what cannot be read is never called different.
class CompareCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;

private:
    CompareOptions options_;
};

}  // namespace vastrelline
