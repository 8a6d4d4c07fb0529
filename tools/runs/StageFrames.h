// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "frames/Frame.h"
#include "frames/FrameSize.h"
#include "runs/RanStages.h"

namespace vastrelline {

enum class StageFrameKind : uint8_t {
    Input,     // what the chain begins with
    Inverted,  // after the inversion
    AfterStage,
    Result,
};

// The frame at one point of a run.
struct StageFrame {
    StageFrameKind kind = StageFrameKind::Input;
    size_t stage = 0;  // AfterStage: its place among the stages of the run
    std::string file;  // the dump, or the curve file that the frame was mapped through
    Frame frame;
};

// The frames of a run in its order, from the numbered dumps in a folder that holds those of this run only.
// Stages that write no dump but a curve file (the linear one) give the frame before them, mapped through it;
// several of them in a row, whose curves write over each other, and stages that write neither are left out.
// Of several dumps of a stage its result counts.
//
// size     of every frame; files of another length are passed over
// Errors   InputError if a dump cannot be read
std::vector<StageFrame> ReadStageFrames(const std::string& folder, FrameSize size,
                                        const std::vector<RanStage>& stages);

// The same for whoever tells about every stage: a run whose dumps went nowhere shows none, and says nothing
// about its stages.
//
// Errors   as ReadStageFrames; OutputError if there is no frame at all
std::vector<StageFrame> RequireStageFrames(const std::string& folder, FrameSize size,
                                           const std::vector<RanStage>& stages);

}  // namespace vastrelline
