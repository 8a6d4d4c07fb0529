// SPDX-License-Identifier: Apache-2.0
#include "commands/FolderRun.h"

#include <CLI/CLI.hpp>
#include <iterator>
#include <utility>

#include "commands/RunPreparation.h"
#include "frames/FrameSize.h"
#include "messages/ToolError.h"
#include "profile/SectionPlan.h"
#include "runs/LookAtFrame.h"

namespace vastrelline {

void AddFolderRunOptions(CLI::App& command, RunOptions& options, std::string& folder) {
    AddInputOptions(command, options);
    command.add_option("--out", folder, "The folder that is made for the pictures")
        ->required()
        ->type_name("FOLDER");
    AddFrameSizeOption(command, options);
    command
        .add_option("--window", options.window,
                    "Levels that become black and white; without it 0 to the section's OUTPUTRANGE")
        ->type_name("LOW:HIGH");
    command.add_flag("--force", options.mayReplace, "Replace a folder that this command made");
    AddCallOptions(command, options);
}

std::optional<GreyWindow> TestFolderRunOptions(const RunOptions& options) {
    TestCallOptions(options);
    if (options.window.empty()) return std::nullopt;
    const std::optional<GreyWindow> window = ParseGreyWindow(options.window);
    if (!window) throw UsageError("'" + options.window + "' is no window", "write it as in 0:4095");
    return window;
}

FolderRun PrepareFolderRun(const RunOptions& options, CommandContext& context) {
    if (const ExportTraits* const named = FindNamedTraits(options)) TestCallExport(options, *named);
    ProfileFile profile = ReadRunProfile(options);
    std::vector<Finding> findings;
    TestMeaning(profile, options, findings);
    const ExportTraits& traits = FindTraits(profile, options);
    TestCallExport(options, traits);
    LoadedFrame frame = LoadFrameFile(options.frame, {ParseFrameSize(options.size), FindSensorSize(profile)});
    const SectionPlan plan = MakeSectionPlan(profile, options.section, traits.kind);
    std::vector<Finding> more = LookBeforeRun(options, frame, profile, plan, traits);
    std::move(more.begin(), more.end(), std::back_inserter(findings));
    for (const Finding& finding : findings) context.messages.Show(finding);
    return {std::move(profile), traits, std::move(frame), std::move(findings)};
}

}  // namespace vastrelline
