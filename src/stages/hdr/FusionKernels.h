// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "pixels/Truncate.h"
#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// The work of the fusion on single rows of pixels, in single precision but for the last step. Each pixel of a
// row is a lane of its own and each sum has one order, so the forms differ in speed only. Rows of floats must
// not overlap the results, but for the one row in which a kernel reads and writes the same place.

// The extremes of a sum of layers.
struct FusionRange {
    float lowest;
    float highest;
};

// A weighted sum of two rows of pixels: first * (a - firstOffset) + second * (b - secondOffset).
struct FusionMix {
    int32_t firstOffset;
    int32_t secondOffset;
    float first;
    float second;
};

// The scale of the fusion's arithmetic: 12 bits, whatever the frame's depth.
inline constexpr double kFusionScale = 4095;

// How a sum becomes a pixel: truncate(4095 * ((sum + shift) / largest * range + low)), in doubles, then
// clamped to max from above or else to min from below. What is not a number becomes min.
struct FusionStretch {
    double shift;
    double largest;
    double range;
    double low;
    int32_t min;
    int32_t max;
};

// So many sums of a row run side by side, so that an addition need not wait for the one before.
inline constexpr int32_t kPartialTurns = 8;

struct FusionKernels {
    // out[x] = pixels[x] - offset
    void (*widenRow)(const uint16_t* pixels, int32_t offset, int32_t count, float* out);

    // out[x] = the mix of both rows
    void (*mixRows)(const uint16_t* a, const uint16_t* b, const FusionMix& mix, int32_t count, float* out);

    // out[x] = the sum of weights[t] * rows[t][x], from 0 with t ascending
    void (*combineRows)(const float* const* rows, const float* weights, int32_t taps, int32_t count,
                        float* out);

    // out[x] = the sum of weights[k] * (rows[2 * k][x] + rows[2 * k + 1][x]), from 0 with k ascending
    void (*combinePairs)(const float* const* rows, const float* weights, int32_t pairs, int32_t count,
                         float* out);

    // out[x] = the mix of both rows - fine[x] - out[x], left to right; widens the range by the result
    void (*sumLayers)(const uint16_t* a, const uint16_t* b, const FusionMix& mix, const float* fine,
                      int32_t count, float* out, FusionRange& range);

    // sums[i] and sums[kPartialTurns + i] = the sums of cosines[x] * pixels[x] and of sines[x] * pixels[x]
    // over every x of the last whole kPartialTurns or before that leaves the rest i, ascending, in doubles
    void (*turnRow)(const uint16_t* pixels, const double* cosines, const double* sines, int32_t count,
                    double* sums);

    // real[x] += cosine * (above[x] + below[x]) and imaginary[x] += sine * (above[x] - below[x])
    void (*turnRowPair)(const uint16_t* above, const uint16_t* below, double cosine, double sine,
                        int32_t count, double* real, double* imaginary);

    // out[x] = the pixel that sums[x] becomes
    void (*stretchRow)(const float* sums, const FusionStretch& stretch, int32_t count, uint16_t* out);
};

// A form of the kernels.
using FusionVariant = Variant<const FusionKernels*>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const FusionVariant> FusionVariants();

// Clamps a value to the largest pixel or else to the smallest.
inline uint16_t ClampToRange(int32_t value, const FusionStretch& stretch) {
    if (value > stretch.max) return LowBits16(stretch.max);
    return LowBits16(value < stretch.min ? stretch.min : value);
}

// The pixel that one sum becomes.
uint16_t StretchPixel(double sum, const FusionStretch& stretch);

// The definition.
extern const FusionKernels kFusionKernelsScalar;

#if VASTRELLINE_VECTOR_FORMS
extern const FusionKernels kFusionKernelsBaseline;
extern const FusionKernels kFusionKernelsAvx2;
extern const FusionKernels kFusionKernelsAvx512;
#endif

}  // namespace vastrelline
