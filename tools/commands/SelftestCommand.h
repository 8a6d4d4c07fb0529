// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "commands/Command.h"

namespace vastrelline {

// Whether the installation that the tool belongs to is whole: its files, its pixels, and those of every
// instruction set of the machine.
class SelftestCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;

    // Errors   UsageError; OutputError for the report. What is wrong with the installation is a finding
    ExitCode Execute(CommandContext& context) override;

private:
    std::string report_;
    bool mayReplace_ = false;
    bool isFilesOnly_ = false;
    size_t jobs_ = 1;
};

}  // namespace vastrelline
