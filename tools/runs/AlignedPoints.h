// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "runs/StagePoints.h"

namespace vastrelline {

// A point of one run, of another, or one of both, with what their frames differ in.
struct AlignedPoint {
    std::string title;           // of the left one, where there is one
    std::optional<size_t> left;  // its place in the run
    std::optional<size_t> right;
    bool isMoved = false;  // in both, but not in the same order as the others
    bool isShown = false;  // both have a frame there, of one size
    size_t differing = 0;  // pixels
    int32_t largest = 0;   // difference, in levels

    // Whether the runs part here: a stage that only one of them has is a difference, too, and so is a frame
    // that only one of them shows.
    bool isDifferent = false;
};

// The points of two runs on one frame side by side, by the kinds of their stages and not by their positions,
// so that what stands behind a stage that only one has can be compared all the same. In the order of the left
// one.
std::vector<AlignedPoint> AlignPoints(const std::vector<const StagePoint*>& left,
                                      const std::vector<const StagePoint*>& right);

// The first point at which the runs part.
std::optional<size_t> FindFirstDifference(const std::vector<AlignedPoint>& points);

}  // namespace vastrelline
