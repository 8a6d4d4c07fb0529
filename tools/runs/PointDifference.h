// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "runs/StagePoints.h"

namespace vastrelline {

// How two runs of the same section on the same frame differ at one point.
struct PointDifference {
    PointKind kind = PointKind::Stage;
    std::string title;                // of the stage; of other points their name
    std::optional<int32_t> position;  // in the list
    bool isShown = true;              // false: neither run leaves a frame there
    bool isInBoth = true;             // false: only one run has this point, or a frame there
    size_t count = 0;                 // pixels that differ
    int32_t largest = 0;              // difference, in levels

    bool IsSame() const { return isInBoth && count == 0; }
};

// Point by point. Behind a point that only one of the runs has nothing can be set side by side: it is the
// last one.
std::vector<PointDifference> ComparePoints(const std::vector<StagePoint>& first,
                                           const std::vector<StagePoint>& second);

// The first point that differs; null if there is none.
const PointDifference* FindFirstDifference(const std::vector<PointDifference>& points);

}  // namespace vastrelline
