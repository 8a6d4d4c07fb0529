// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "frames/Frame.h"
#include "frames/FrameSize.h"
#include "phantom/KnownLevels.h"

namespace vastrelline {

// Groups of vertical line pairs, one below the other, with plain stripes of the mean level between them. The
// lines are sine waves and no bars: blur only weakens a sine, so one number tells all of its contrast.
struct LinesPhantom {
    FrameSize size;
    KnownLevels levels;               // of the lines before the blur and before the pixels collect the light
    double noise = 0.0;               // standard deviation, in levels
    double blurPixels = 0.0;          // sigma of the Gaussian blur
    std::vector<double> frequencies;  // cycles per pixel, above 0 and below 0.5; at least one
};

// One group as it is made.
struct LineGroup {
    int32_t top = 0;     // first row
    int32_t height = 0;  // rows
    double frequency = 0.0;
    double amplitude = 0.0;   // of the sine in the frame, in levels
    double modulation = 0.0;  // amplitude by mean level, which is (max - min) / (max + min)
};

std::vector<LineGroup> LineGroupsOf(const LinesPhantom& phantom);

// The same arguments give the same pixels on every machine.
Frame MakeLinesPhantom(const LinesPhantom& phantom);

}  // namespace vastrelline
