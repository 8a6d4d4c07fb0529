#pragma once

#include <string>
#include <string_view>

#include "commands/Command.h"

namespace vastrelline {

// Tells whether two frames are equal, and if not how much they differ and where first. ExitCode::Findings for
// different ones.
class CompareCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;

private:
    std::string first_;
    std::string second_;
    std::string size_;  // of raw frames; may be empty
};

}  // namespace vastrelline
