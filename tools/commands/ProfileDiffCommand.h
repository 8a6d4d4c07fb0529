// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "commands/Command.h"
#include "frames/Frame.h"
#include "profile/ProfileFile.h"

namespace vastrelline {

// Tells in what the runs of two sections differ, stage by stage. ExitCode::Findings where they do.
class ProfileDiffCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;

private:
    using SectionPair = std::pair<std::string, std::string>;

    // Those that --section names, or all of the same name.
    std::vector<SectionPair> ChoosePairs(const ProfileFile& first, const ProfileFile& second) const;

    // None without --frame.
    std::optional<Frame> ReadDiffFrame(size_t pairCount) const;

    std::string first_;
    std::string second_;
    std::string section_;
    std::string exportName_;
    std::string frame_;
    std::string size_;  // of a raw frame
};

}  // namespace vastrelline
