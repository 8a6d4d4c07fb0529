// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "frames/Frame.h"
#include "frames/FrameSize.h"
#include "phantom/KnownLevels.h"

namespace vastrelline {

// A step wedge: stripes side by side, from the darkest at the left to the brightest at the right, all of
// equal width but for the rounding to whole columns.
struct WedgePhantom {
    FrameSize size;
    KnownLevels levels;
    std::vector<double> noise;  // standard deviation of each step; at least one step, at most one a column
};

// One step as it is made.
struct WedgeStep {
    int32_t left = 0;
    int32_t width = 0;
    double level = 0.0;  // whole: equal differences, rounded
    double noise = 0.0;
};

std::vector<WedgeStep> WedgeStepsOf(const WedgePhantom& phantom);

// The same arguments give the same pixels on every machine.
Frame MakeWedgePhantom(const WedgePhantom& phantom);

}  // namespace vastrelline
