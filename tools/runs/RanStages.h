// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "profile/SectionPlan.h"
#include "runs/RunLog.h"

namespace vastrelline {

// A stage that a run went through.
struct RanStage {
    const PlannedPlace* place;        // in the plan, with the keys that were read
    std::string title;                // "CLAHE", for people
    std::optional<double> elapsedMs;  // none: the stage writes no log line, or there is no log
};

// The stages that a run went through, in its order: those of the plan, with the times of its log.
//
// isLow    the exposure was found to be low: a low-exposure chain then runs its fixed sequence
// log      none: nothing is known of the times
std::vector<RanStage> ListRanStages(const SectionPlan& plan, bool isLow, const std::optional<RunLog>& log);

// "12 ms", "under 1 ms": the log counts in whole milliseconds. Empty where the time is not known.
std::string DescribeTime(const RanStage& stage);

}  // namespace vastrelline
