// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "frames/Frame.h"
#include "library/ExportRequest.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "runs/FrameEffect.h"

namespace vastrelline {

// Runs a section on a frame, with dumps in a private folder, and gives the frames of the run.
//
// Errors   as the caller of exports; ProcessingError for a code other than 0
RunFrames RunForFrames(const ProfileFile& file, const SectionPlan& plan, const ExportTraits& traits,
                       const Frame& frame, const ExportCaller& callExport);

// A table for people: after each stage the share of pixels that differ, mean and largest difference.
std::string FormatEffects(const std::string& framePath, const std::vector<FrameEffect>& effects);

// The same for programs, as docs/tool-json.md tells.
nlohmann::ordered_json EffectsToJson(const std::vector<FrameEffect>& effects);

}  // namespace vastrelline
