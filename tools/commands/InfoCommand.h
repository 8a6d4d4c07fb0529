// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "commands/Command.h"
#include "commands/FrameMeasure.h"

namespace vastrelline {

// Tells what is in frames: format, size, levels, and what to do next. A frame that cannot be read does not
// keep the others from being told; the command then ends with the code of the first such error.
class InfoCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;

private:
    std::vector<std::string> frames_;
    std::string size_;  // of raw frames; may be empty
    MeasureOptions measure_;
};

}  // namespace vastrelline
