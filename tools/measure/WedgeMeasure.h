// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "frames/Frame.h"
#include "measure/FlatNoise.h"

namespace vastrelline {

struct MeasuredStep {
    PixelArea area;  // of its even inside
    FlatNoise noise;
    bool isClipped = false;            // by so many pixels that its noise is not known
    std::optional<double> difference;  // of its mean to that of the step before; none of the first
    std::optional<double>
        contrastToNoise;  // that difference, without sign, by the root mean square of both noises
};

struct WedgeMeasure {
    bool runsDown = false;  // the steps lie below each other, not side by side
    std::vector<MeasuredStep> steps;
};

// The steps of a wedge that fills the frame, all of equal width: noise of each (see MeasureFlatNoise) and
// contrast to the one before. Only the inner three fifths of a step count, away from its borders.
//
// steps    1 or more; 1 takes the frame as one even area
// Errors   CannotMeasure: too many steps for the frame, or the steps do not differ
WedgeMeasure MeasureWedge(const Frame& frame, int32_t steps);

}  // namespace vastrelline
