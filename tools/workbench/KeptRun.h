// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frames/CurvePoint.h"
#include "library/ExportRequest.h"
#include "messages/ToolError.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "runs/FrameRun.h"
#include "runs/StagePoints.h"
#include "workbench/Desk.h"

namespace vastrelline {

enum class RunState : uint8_t {
    Running,
    Picture,   // frame and result are there
    Complete,  // the frames of all stages, too
    Failed,
    Ended,  // by a newer change
};

// "running", "picture", "complete", "failed", "ended"
std::string_view RunStateName(RunState state);

// A point of a run that can be looked at.
struct KeptPoint {
    StagePoint point;
    std::vector<CurvePoint> curve;  // that its stage laid over the frame before; empty: none
};

// A run of the desk. One that is published is never changed: what comes later is a new object of the same
// number, which shares what it can.
struct KeptRun {
    uint64_t id = 0;
    RunState state = RunState::Running;
    DeskState desk;
    std::string change;  // to the run before, in words
    std::string when;    // UTC
    std::optional<double> elapsedBefore;
    bool isAside = false;        // not what the desk shows now: it stands beside that for a comparison
    std::optional<uint64_t> of;  // of side A on another frame: the run in the history whose settings it has

    // Empty until the export has returned.
    struct Basis {
        ProfileFile file;
        SectionPlan plan;  // of `file`
        FrameRun run;      // of `plan`; without dumps, so that its times are the run's own
        std::string hash;  // SHA-256 of the result's pixels; empty: the export gives none
    };
    std::shared_ptr<const Basis> basis;
    std::vector<std::shared_ptr<const KeptPoint>> points;  // Picture: frame and result
    std::optional<ToolError> error;                        // Failed
};

// The point of a name: an index, "frame" (the first) or "result" (the last); null if there is none.
std::shared_ptr<const KeptPoint> FindPoint(const KeptRun& run, std::string_view name);

}  // namespace vastrelline
