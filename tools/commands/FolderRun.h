// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "commands/RunOptions.h"
#include "formats/FrameFile.h"
#include "frames/GreyWindow.h"
#include "library/ExportRequest.h"
#include "messages/Finding.h"
#include "profile/ProfileFile.h"

namespace vastrelline {

// What the commands share that look at a frame's runs and leave a folder of pictures.

// FRAME, --profile, --section, --out, and what a call takes.
void AddFolderRunOptions(CLI::App& command, RunOptions& options, std::string& folder);

// The window of --window; none without it.
//
// Errors   UsageError
std::optional<GreyWindow> TestFolderRunOptions(const RunOptions& options);

// A frame and the section that it is run with.
struct FolderRun {
    ProfileFile profile;
    const ExportTraits& traits;
    LoadedFrame frame;
    std::vector<Finding> findings;  // that have been shown
};

// Reads frame and profile, and shows what is to be said of them.
//
// Errors   as RunCommand
FolderRun PrepareFolderRun(const RunOptions& options, CommandContext& context);

}  // namespace vastrelline
