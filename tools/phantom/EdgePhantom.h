// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "frames/Frame.h"
#include "frames/FrameSize.h"
#include "phantom/BlurredStep.h"
#include "phantom/KnownLevels.h"

namespace vastrelline {

// A straight edge through the middle of the frame, dark at the left, slanted against the columns.
struct EdgePhantom {
    FrameSize size;
    KnownLevels levels;
    double noise = 0.0;  // standard deviation, in levels
    double angleDegrees =
        0.0;  // from the vertical, -45 to 45; above 0 the edge runs to the right on its way down
    double blurPixels = 0.0;  // sigma of the Gaussian blur before the pixels collect the light
};

// The same arguments give the same pixels on every machine.
Frame MakeEdgePhantom(const EdgePhantom& phantom);

}  // namespace vastrelline
