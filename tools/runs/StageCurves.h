// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "runs/CurveFile.h"
#include "runs/RanStages.h"
#include "runs/StageFrames.h"

namespace vastrelline {

// The curve that a stage laid over the frame, as its run left it among the dumps of a folder; nothing for a
// stage without one. Of several stages of a kind whose curve file carries no number the last one has it: they
// write over each other.
//
// step   a frame after a stage, of the folder
// Errors InputError if the curve file cannot be read
std::optional<std::vector<CurvePoint>> FindStageCurve(const std::string& folder,
                                                      const std::vector<RanStage>& stages,
                                                      const StageFrame& step);

}  // namespace vastrelline
