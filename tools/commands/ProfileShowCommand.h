// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "commands/Command.h"

namespace vastrelline {

// Prints every value that a run of a section would use, as it would read it.
class ProfileShowCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;

private:
    std::string file_;
    std::string section_;
    std::string exportName_;
    bool isExplicit_ = false;
};

}  // namespace vastrelline
