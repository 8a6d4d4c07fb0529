// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "frames/Frame.h"

namespace vastrelline {

struct MeasuredGroup {
    int32_t top = 0;  // first row (column, of lying lines) that shows lines, and how many there are
    int32_t height = 0;
    double frequency = 0.0;  // cycles per pixel
    double amplitude = 0.0;  // of the fundamental wave, in levels
    double mean = 0.0;
    double modulation = 0.0;  // amplitude by mean; (max - min) / (max + min) of a sine. 0 of a black area
};

struct LinesMeasure {
    bool isLying = false;  // the lines run from left to right
    std::vector<MeasuredGroup> groups;
};

// Frequency and modulation of groups of parallel lines, along rows or columns, with plain rows between groups
// or one group alone. The rows of a group are averaged; the strongest wave under a Hann window counts, so of
// bars the fundamental, which is 4 / pi times as strong as the bars themselves (J. W. Coltman, Journal of the
// Optical Society of America 44, 1954).
//
// Errors   CannotMeasure: too small an area, or no lines
LinesMeasure MeasureLines(const Frame& frame);

}  // namespace vastrelline
