// SPDX-License-Identifier: Apache-2.0
#include "workbench/CompareJobs.h"

#include <chrono>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

#include "profile/DiffReport.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kLineWidth = 100;  // of the table of keys, in characters

template <typename Number>
Json OptionalJson(const std::optional<Number>& number) {
    return number ? Json(*number) : Json(nullptr);
}

Json LinesOf(const std::string& text) {
    Json lines = Json::array();
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

std::vector<const StagePoint*> PointsOf(const KeptRun& run) {
    std::vector<const StagePoint*> points;
    points.reserve(run.points.size());
    for (const std::shared_ptr<const KeptPoint>& each : run.points) points.push_back(&each->point);
    return points;
}

}  // namespace

Json ComparisonToJson(const Comparison& comparison) {
    Json points = Json::array();
    for (const AlignedPoint& point : comparison.points)
        points.push_back({{"title", point.title},
                          {"leftPoint", OptionalJson(point.left)},
                          {"rightPoint", OptionalJson(point.right)},
                          {"moved", point.isMoved},
                          {"shown", point.isShown},
                          {"equal", !point.isDifferent},
                          {"differing", point.isShown ? Json(point.differing) : Json(nullptr)},
                          {"largest", point.isShown ? Json(point.largest) : Json(nullptr)}});
    Json json = JobToJson(comparison.job);
    json["left"] = comparison.left;
    json["right"] = comparison.right;
    json["summary"] = SumUpDifferences(comparison.keys);
    json["keys"] = LinesOf(FormatDifferences(comparison.keys, kLineWidth));
    json["places"] = DifferencesToJson(comparison.keys);
    json["points"] = std::move(points);
    json["firstDifference"] = OptionalJson(FindFirstDifference(comparison.points));
    json["leftRun"] = comparison.leftRun == 0 ? Json(nullptr) : Json(comparison.leftRun);
    json["rightRun"] = comparison.rightRun == 0 ? Json(nullptr) : Json(comparison.rightRun);
    return json;
}

CompareJobs::CompareJobs(AsideRuns runs, ExportCaller callExport, EventChannel& events)
    : runs_(std::move(runs)), callExport_(std::move(callExport)), events_(events) {}

void CompareJobs::Begin(uint64_t id, CompareOrder order) {
    const std::lock_guard lock(mutex_);
    if (newest_.job.id != 0 && newest_.job.state == JobState::Running) {
        newest_.job.state = JobState::Cancelled;
        PublishJob(events_, newest_.job);
    }
    newest_ = {};
    newest_.job = {id, JobKind::Compare, 0, 2, JobState::Running, std::nullopt};
    newest_.left = order.left.name;
    newest_.right = order.right.name;
    newest_.keys = order.keys;
    PublishJob(events_, newest_.job);
    // Within the lock, so that the job that is shown is the one that is at work.
    task_.Want([this, id, order = std::move(order)](const std::stop_token& stop) { Make(id, order, stop); },
               std::chrono::milliseconds(0));
}

std::shared_ptr<const Comparison> CompareJobs::Find(uint64_t id) const {
    const std::lock_guard lock(mutex_);
    return newest_.job.id == id && id != 0 ? std::make_shared<const Comparison>(newest_) : nullptr;
}

void CompareJobs::Cancel(uint64_t id) {
    FinishAs(id, JobState::Cancelled);
    const std::lock_guard lock(mutex_);
    if (newest_.job.id == id) task_.Cancel();
}

void CompareJobs::Make(uint64_t id, const CompareOrder& order, const std::stop_token& stop) {
    KeptRun left = runs_.begin(order.left.desk, order.left.name);
    KeptRun right = runs_.begin(order.right.desk, order.right.name);
    runs_.hold({left.id, right.id});
    Update(id, [&](Comparison& comparison) {
        comparison.leftRun = left.id;
        comparison.rightRun = right.id;
    });
    // The right one first: it is the one that may not run at all.
    for (const auto& [run, side] : {std::pair(&right, &order.right), std::pair(&left, &order.left)}) {
        *run = RunSide(std::move(*run), *side, stop);
        if (run->state == RunState::Failed) return FinishAs(id, JobState::Failed, run->error);
        if (run->state != RunState::Complete) return FinishAs(id, JobState::Cancelled);
        if (side == &order.right)
            Update(id, [&](Comparison& comparison) {
                comparison.job.done = 1;
                PublishJob(events_, comparison.job);
            });
    }
    std::vector<AlignedPoint> points = AlignPoints(PointsOf(left), PointsOf(right));
    Update(id, [&](Comparison& comparison) {
        comparison.job.done = 2;
        comparison.points = std::move(points);
    });
    FinishAs(id, JobState::Done);
}

KeptRun CompareJobs::RunSide(KeptRun run, const ComparedSide& side, const std::stop_token& stop) const {
    runs_.publish(run);
    const auto makeInput = [&](const DeskState& desk) {
        DeskRunInput input = runs_.makeInput(desk);
        input.profilePath = side.profilePath;
        input.call.library = side.library;
        return input;
    };
    KeptRun last;
    RunDesk(std::move(run), makeInput, callExport_, stop, [&](KeptRun next) {
        last = next;
        runs_.publish(std::move(next));
    });
    return last;
}

void CompareJobs::Update(uint64_t id, const Change& change) {
    const std::lock_guard lock(mutex_);
    if (newest_.job.id == id && newest_.job.state == JobState::Running) change(newest_);
}

void CompareJobs::FinishAs(uint64_t id, JobState state, std::optional<ToolError> error) {
    Update(id, [&](Comparison& comparison) {
        comparison.job.state = state;
        comparison.job.error = std::move(error);
        PublishJob(events_, comparison.job);
    });
}

}  // namespace vastrelline
