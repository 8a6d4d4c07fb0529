// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "commands/Command.h"
#include "profile/KeyExplanation.h"

namespace vastrelline {

// Tells what a key or a stage does.
class ProfileExplainCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;

private:
    // Where the profile that was named has it.
    std::vector<KeyOccurrence> Occurrences(LookedUp& found) const;

    std::string word_;
    std::string profile_;
    std::string section_;
    std::string exportName_;
};

}  // namespace vastrelline
