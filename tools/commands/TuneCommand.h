// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "commands/Command.h"
#include "commands/RunOptions.h"

namespace vastrelline {

// `tune`: the workbench in the browser, until the tool is asked to end.
class TuneCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;

private:
    RunOptions options_;
    std::vector<std::string> inputs_;
    std::vector<std::string> against_;  // files that the desk may be compared with
    uint16_t port_ = 0;
    bool isBrowserUnwanted_ = false;
    bool isHistoryUnwanted_ = false;
};

}  // namespace vastrelline
