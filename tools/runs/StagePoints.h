// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frames/Frame.h"
#include "frames/FrameStatistics.h"
#include "runs/StageFrames.h"

namespace vastrelline {

enum class PointKind : uint8_t {
    Frame,  // as it was read; only where the chain begins with another one
    Input,
    Inverted,
    Stage,
    Result,
};

// "frame", "input", "inverted", "stage", "result"
std::string_view PointName(PointKind kind);

// The frame at one point of a run.
struct StagePoint {
    PointKind kind = PointKind::Stage;
    std::string title;              // "Gamma curve"; of other points their name
    const RanStage* stage;          // null: no stage
    std::string dump;               // the file that the frame is of; empty: none
    std::optional<Frame> frame;     // none: the stage shows none
    FrameStatistics statistics;     // of the frame
    std::optional<double> changed;  // share of the pixels that the frame before does not have; none: no such
};

// All points of a run in its order, stages that show no frame among them.
//
// read     the frame as it was read
// result   what the host gets; nothing of an export that gives a bitmap only: its last dump counts
// stages   those that ran; the points point to them
std::vector<StagePoint> ListStagePoints(const Frame& read, const std::optional<Frame>& result,
                                        std::vector<StageFrame> frames, const std::vector<RanStage>& stages);

}  // namespace vastrelline
