// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "commands/Command.h"

namespace vastrelline {

// Writes a frame as another kind of file: all levels as they are, or 8 bits through a window.
class ConvertCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;

private:
    void TestOptions() const;

    std::string source_;
    std::string target_;
    std::string size_;    // of a raw frame; may be empty
    std::string window_;  // empty: all levels are kept where the kind of file can
    bool isPng16_ = false;
    bool isDeflated_ = false;
    bool mayReplace_ = false;
};

}  // namespace vastrelline
