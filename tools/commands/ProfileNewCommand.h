// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "commands/Command.h"

namespace vastrelline {

// Writes one of the sample profiles to a new file.
class ProfileNewCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;

private:
    std::string sample_ = "general";
    std::string out_;
    bool mayReplace_ = false;
};

}  // namespace vastrelline
