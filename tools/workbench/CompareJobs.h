// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "library/ExportRequest.h"
#include "profile/ProfileDiff.h"
#include "runs/AlignedPoints.h"
#include "server/EventChannel.h"
#include "workbench/DeskRun.h"
#include "workbench/Job.h"
#include "workbench/KeptRun.h"
#include "workbench/LatestTask.h"

namespace vastrelline {

// One side of a comparison.
struct ComparedSide {
    std::string name;  // for people
    DeskState desk;
    std::string profilePath;
    std::string library;  // its file; empty: the tool's own
};

struct CompareOrder {
    ComparedSide left;
    ComparedSide right;
    std::vector<PlaceDifference> keys;  // what of the settings differs
};

// A comparison as it is now.
struct Comparison {
    Job job;
    std::string left;
    std::string right;
    std::vector<PlaceDifference> keys;
    std::vector<AlignedPoint> points;  // none until both runs are complete
    uint64_t leftRun = 0;              // can be looked at as any other run, until the next comparison
    uint64_t rightRun = 0;
};

nlohmann::ordered_json ComparisonToJson(const Comparison& comparison);

// How a comparison's runs come to stand among all others.
struct AsideRuns {
    // A run that stands aside, under the next number.
    std::function<KeptRun(DeskState desk, std::string change)> begin;
    std::function<void(KeptRun run)> publish;
    std::function<void(std::vector<uint64_t> ids)> hold;  // keeps their frames until others are held
    // What a run needs; Errors: those of the frame's file.
    DeskInputMaker makeInput;
};

// Compares, by runs on the desk's frame one after the other. The newest comparison counts, as the newest
// sheet does.
class CompareJobs {
public:
    // events   outlives this
    CompareJobs(AsideRuns runs, ExportCaller callExport, EventChannel& events);

    void Begin(uint64_t id, CompareOrder order);

    // Null: there is no such comparison, or a newer one has taken its place.
    std::shared_ptr<const Comparison> Find(uint64_t id) const;

    // Nothing happens to one that is not at work.
    void Cancel(uint64_t id);

    // Ends what is at work, and waits for its end.
    void End() { task_.End(); }

private:
    using Change = std::function<void(Comparison& comparison)>;

    void Make(uint64_t id, const CompareOrder& order, const std::stop_token& stop);
    KeptRun RunSide(KeptRun run, const ComparedSide& side, const std::stop_token& stop) const;
    void Update(uint64_t id, const Change& change);
    void FinishAs(uint64_t id, JobState state, std::optional<ToolError> error = {});

    const AsideRuns runs_;
    const ExportCaller callExport_;
    EventChannel& events_;
    mutable std::mutex mutex_;
    Comparison newest_;  // id 0: none yet
    LatestTask task_;    // last: its work uses the others
};

}  // namespace vastrelline
