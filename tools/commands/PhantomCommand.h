// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "commands/Command.h"
#include "commands/PhantomOptions.h"

namespace vastrelline {

// Makes a phantom's frame, writes it and tells about it.
class PhantomCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;

    // Errors   UsageError for a size, number or ending that cannot be; OutputError if a file cannot be
    //          written
    ExitCode Execute(CommandContext& context) override;

private:
    PhantomOptions options_;
};

}  // namespace vastrelline
