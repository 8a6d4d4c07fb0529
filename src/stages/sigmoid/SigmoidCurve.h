// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace vastrelline {

// Where a curve lies, in levels.
struct SigmoidPlace {
    int32_t low;
    int32_t high;
    int32_t centre;
    int32_t width;  // negative for a falling curve
};

// The curve of BuildSigmoidCurve as a function of the level.
class SigmoidShape {
public:
    // histogram   as BuildUnclampedHistogram up to maxValue
    SigmoidShape(std::span<const uint32_t> histogram, int32_t pixelCount, int32_t outputRange, double ratio,
                 int32_t limitBin);

    uint16_t EntryAt(int32_t level) const;
    std::vector<uint16_t> Table(int32_t maxValue) const;

private:
    int32_t CurveAt(int32_t level) const;
    uint16_t Stretch(int32_t value) const;

    SigmoidPlace place_;
    int32_t outputRange_;
    double top_;
    int32_t floor_;
    int32_t ceiling_;
};

// An S-shaped curve fitted to the occupied levels of a frame: one entry for each level 0..maxValue, from 0 at
// the low end of the occupied levels to outputRange at their high end, flat outside.
//
// maxValue      top level of the table, 0..65535; pixels above it are not counted
// outputRange   the output at the high end and above
// ratio         0: the curve is centred in the middle of the occupied levels. Otherwise the fraction of the
//               frame's pixels below the centre, and the curve reaches as far to the left of it as the high
//               end lies to the right. With the centre above the high end the curve falls
// limitBin      levels whose count, smoothed over 50 levels, is not above it are not occupied
// Rounding      truncation toward zero in doubles, then the low 16 bits, before and after the curve is
//               stretched to the output
// One level     a curve without width gives 0 everywhere: level 0 alone, or a centre that falls on the high
//               end. A frame of one level above 0 gets outputRange with ratio 0, if that level is occupied,
//               for the low end is taken up to 100 levels further down
std::vector<uint16_t> BuildSigmoidCurve(const uint16_t* pixels, int32_t width, int32_t height,
                                        int32_t maxValue, int32_t outputRange, double ratio,
                                        int32_t limitBin);

}  // namespace vastrelline
