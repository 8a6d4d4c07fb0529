// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "batch/BatchManifest.h"
#include "batch/FrameList.h"
#include "commands/BatchOptions.h"
#include "frames/FrameSize.h"
#include "library/ExportRequest.h"
#include "messages/Finding.h"
#include "messages/ToolError.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"

namespace vastrelline {

// What holds for all frames of a batch; all of it outlives the work.
struct BatchPlan {
    const BatchOptions& options;
    const ProfileFile& profile;
    const SectionPlan& plan;
    const ExportTraits& traits;
    BatchManifest& manifest;
    const ExportCaller& callExport;
};

enum class FrameState : uint8_t {
    Done,
    Before,  // by an earlier batch, and nothing has changed since
    Failed,
};

struct FrameOutcome {
    const ListedFrame* frame = nullptr;
    FrameState state = FrameState::Failed;
    std::string resultPath;
    std::string resultHash;  // SHA-256 of the result's file; empty if it failed
    FrameSize size;          // 0 x 0 if it was not read
    double elapsedMs = 0.0;  // of the export
    std::vector<Finding> findings;
    std::optional<ToolError> error;  // if it failed
};

// Does one frame, or finds that it is done. The result is there under its name when it is whole, and the
// manifest knows of it. Several frames may be done at a time, by threads.
//
// onWait   called again and again while the export is waited for
// Errors   CancelledError; what is wrong with the frame is in the outcome
FrameOutcome DoBatchFrame(const BatchPlan& plan, const ListedFrame& frame,
                          const std::function<void()>& onWait);

}  // namespace vastrelline
