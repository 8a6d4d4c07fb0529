// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "commands/Command.h"
#include "lint/LintJson.h"

namespace vastrelline {

// Looks for what is wrong or odd in profiles, and mends what is certain. ExitCode::Findings for warnings and
// errors.
class ProfileLintCommand : public Command {
public:
    std::string_view Examples() const override;
    std::string_view Notes() const override;
    void AddOptions(CLI::App& command) override;
    ExitCode Execute(CommandContext& context) override;

private:
    LintedFile LintFile(const std::string& path) const;

    std::vector<std::string> files_;
    std::string section_;
    bool isFixing_ = false;
    bool wantsSarif_ = false;
};

}  // namespace vastrelline
