// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "commands/Command.h"

namespace vastrelline {

// Sets values of one section of a profile in place and keeps every other byte.
class ProfileSetCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;

private:
    std::string file_;
    std::vector<std::string> settings_;
    std::string section_;
    bool isKeyForced_ = false;
    bool isSectionNew_ = false;
};

}  // namespace vastrelline
