// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "commands/Command.h"
#include "commands/RunOptions.h"
#include "sweep/SweptKey.h"

namespace vastrelline {

// Runs a section on a frame with one value of a key after the other, or of two keys, and shows all results.
class SweepCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;

    // Errors   as StagesCommand. Values that fail are told; the code is then not 0, and the folder has the
    //          pictures of all others
    ExitCode Execute(CommandContext& context) override;

private:
    std::vector<SweptKey> ParseKeys() const;

    RunOptions options_;
    std::string folder_;
    std::vector<std::string> settings_;
    size_t limit_ = 0;
    size_t jobs_ = 1;
};

}  // namespace vastrelline
