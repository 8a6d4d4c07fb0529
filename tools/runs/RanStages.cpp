// SPDX-License-Identifier: Apache-2.0
#include "runs/RanStages.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace vastrelline {
namespace {

bool IsOfTheRun(const PlannedPlace& place, bool isLow) {
    if (!place.runs) return false;
    switch (place.role) {
        case PlaceRole::FixedStep:
            return true;
        case PlaceRole::ListedStage:
            return !isLow;
        case PlaceRole::LowStage:
            return isLow;
        default:
            return false;
    }
}

std::string TitleOf(const PlannedPlace& place) {
    if (place.role == PlaceRole::FixedStep && place.runs && !place.isSwitchedOn) return "Linear curve";
    return place.stage == nullptr ? "Inversion" : std::string(place.stage->title);
}

bool IsLineOf(const PlannedPlace& place, const LoggedStage& line) {
    if (place.stage == nullptr) return false;
    const std::span<const std::string_view> words =
        place.role == PlaceRole::FixedStep ? place.stage->fixedLogWords : place.stage->logWords;
    return std::find(words.begin(), words.end(), line.name) != words.end();
}

}  // namespace

std::vector<RanStage> ListRanStages(const SectionPlan& plan, bool isLow, const std::optional<RunLog>& log) {
    std::vector<RanStage> stages;
    size_t next = 0;  // of the log's lines
    for (const PlannedPlace& place : plan.places) {
        if (!IsOfTheRun(place, isLow)) continue;
        RanStage& stage = stages.emplace_back(RanStage{&place, TitleOf(place), std::nullopt});
        // Lines and stages have one order, and a stage that logs does so whenever it runs: the next line is
        // this stage's or a later one's.
        if (!log || next == log->stages.size() || !IsLineOf(place, log->stages[next])) continue;
        stage.elapsedMs = log->stages[next++].elapsedMs;
    }
    return stages;
}

std::string DescribeTime(const RanStage& stage) {
    if (!stage.elapsedMs) return {};
    return *stage.elapsedMs < 1.0 ? "under 1 ms"
                                  : std::to_string(static_cast<int64_t>(*stage.elapsedMs)) + " ms";
}

}  // namespace vastrelline
