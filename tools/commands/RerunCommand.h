// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "commands/Command.h"

namespace vastrelline {

// Makes a result again from the record that it left, and tells whether it is the same. ExitCode::Findings
// for a different one; a frame or profile that is gone or has changed is an input that cannot be taken.
class RerunCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;

private:
    std::string result_;
    std::string frame_;
    std::string profile_;
};

}  // namespace vastrelline
