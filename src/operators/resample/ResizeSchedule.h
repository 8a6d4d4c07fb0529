// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "operators/resample/Resize.h"
#include "pixels/Truncate.h"

namespace vastrelline {

// Where a row or column of the result lies in the source.
struct SourcePlace {
    int32_t index;
    double rest;
};

inline SourcePlace SourcePlaceOf(int32_t position, double scale) {
    const double place = position / scale;
    const int32_t index = TruncateToInt32(std::floor(place));
    return {index, place - index};
}

// A row of the result between two source rows: for each place the four pixels around it.
struct ResizeBlend {
    const double* aboveLeft;
    const double* aboveRight;
    const double* belowLeft;
    const double* belowRight;
    const double* rests;  // how far each place lies to the right of its left pixels, below 1
    double rowRest;       // how far the row lies below the upper pixels, below 1
    size_t count;
};

// Place x of the row, in the definition's very operations. The weights are 0 to 1: every sum fits 16 bits.
inline uint16_t BlendFourPixels(const ResizeBlend& blend, size_t x) {
    const double ax = blend.rests[x];
    const double ay = blend.rowRest;
    const double sum = (1 - ax) * (1 - ay) * blend.aboveLeft[x] + ax * (1 - ay) * blend.aboveRight[x] +
                       ax * ay * blend.belowRight[x] + (1 - ax) * ay * blend.belowLeft[x];
    return static_cast<uint16_t>(static_cast<int32_t>(sum));
}

// The same on a source row, where the pixels below have no weight.
inline uint16_t BlendTwoPixels(const ResizeBlend& blend, size_t x) {
    const double ax = blend.rests[x];
    const double sum = (1 - ax) * blend.aboveLeft[x] + ax * blend.aboveRight[x];
    return static_cast<uint16_t>(static_cast<int32_t>(sum));
}

// The loops over a row for one instruction set. Those that double write twice `width` pixels; all but
// repeatRow leave out the last two.
struct ResizeKernels {
    void (*halveRow)(const uint16_t* source, int32_t count, uint16_t* result);
    void (*doubleRow)(const uint16_t* source, int32_t width, uint16_t* result);
    void (*doubleBetweenRows)(const uint16_t* above, const uint16_t* below, int32_t width, uint16_t* result);
    void (*repeatRow)(const uint16_t* source, int32_t width, uint16_t* result);
    void (*blendRow)(const ResizeBlend& blend, uint16_t* result);
    void (*blendInRow)(const ResizeBlend& blend, uint16_t* result);  // rowRest is 0, nothing below is read
};

// The resampling with these loops. Scales other than 0.5 and 2 compute as the definition does, but work out
// the place of each column, and the pixels at both sides of it in a row, only once.
void RunResizeSchedule(const ResizeCall& call, const ResizeKernels& kernels);

}  // namespace vastrelline
