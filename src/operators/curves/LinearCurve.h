// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "operators/curves/TonedFrame.h"

namespace vastrelline {

// The output of a place on a straight ramp: outputRange * place, truncated, within 0..outputRange.
//
// outputRange   below 0 the output is 0 everywhere
// place         0 at the ramp's start, 1 at its end; what is not a number gives 0
int32_t RampValue(int32_t outputRange, double place);

// What a pixel holds of it: the low 16 bits.
uint16_t RampEntry(int32_t outputRange, double place);

// A straight ramp from 0 at level 0.
struct LinearRamp {
    double end;           // the level from which on the output is outputRange; below 0 all of it is 0
    int32_t outputRange;  // may pass 16 bits

    int32_t ValueAt(int32_t level) const { return RampValue(outputRange, level / end); }
    uint16_t EntryAt(int32_t level) const { return RampEntry(outputRange, level / end); }
};

// A straight ramp from level 0 to `high`, in a table of one entry per level 0..maxValue, at most 0..65535.
//
// maxValue      0 or more. Above 65535 the table ends at 65535: no pixel reaches further
// outputRange   the output at `high` and above
// limitBin      mode 1: the ramp's top is the level at which the count of pixels from maxValue down to 1
//               passes it; where none does, all levels map to 0. Other modes: -1 makes maxValue the top;
//               otherwise the top is the last level whose count, smoothed over 50 levels, is above it, or
//               maxValue
// Rounding      truncation toward zero, within 0..outputRange
std::vector<uint16_t> BuildLinearCurve(const uint16_t* pixels, int32_t width, int32_t height,
                                       int32_t maxValue, int32_t outputRange, int32_t limitBin, int32_t mode);

// The ramp of that table, and the table of such a ramp.
LinearRamp FindLinearRamp(const uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                          int32_t outputRange, int32_t limitBin, int32_t mode);
LinearRamp FindLinearRamp(TonedFrame& frame, int32_t maxValue, int32_t outputRange, int32_t limitBin,
                          int32_t mode);
std::vector<uint16_t> MakeRampTable(const LinearRamp& ramp, int32_t maxValue);

}  // namespace vastrelline
