// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "commands/StagePictures.h"
#include "formats/FrameFile.h"
#include "library/ExportRequest.h"
#include "messages/Finding.h"
#include "profile/EffectiveValues.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "runs/FrameRun.h"

namespace vastrelline {

// What a look at all stages found, for people and for programs.
struct StagesReport {
    std::string framePath;
    const LoadedFrame* frame = nullptr;
    const ProfileFile* profile = nullptr;
    const SectionPlan* plan = nullptr;
    const std::vector<EffectivePlace>* places = nullptr;  // in the order of the plan's
    const ExportTraits* traits = nullptr;
    const FrameRun* run = nullptr;  // without dumps: the times are its
    const std::vector<ShownPoint>* points = nullptr;
    const StagePictures* pictures = nullptr;
    std::string folder;
    std::vector<Finding> findings;
};

// A table of the points, each with the keys that its stage reads.
//
// width   of the terminal
std::string FormatStages(const StagesReport& report, size_t width);

// The same for programs, as docs/tool-json.md tells.
nlohmann::ordered_json StagesToJson(const StagesReport& report);

}  // namespace vastrelline
