// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// The top level of a quantised deviation map, which stands for its largest deviation.
inline constexpr int32_t kTopDeviationLevel = 16383;

// The window's reach for which the deviation has fast forms: the one that the smoothing uses.
inline constexpr int32_t kDeviationRadius = 3;

// Standard deviation in a square window of 2 * radius + 1 pixels, for a band of rows.
//
// image, squares   width * height pixels, and the square of each
// output           as many; only rows `top` to `bottom` without `radius` columns at each side are written
// Displacement     the windows lie as those of BandMeanPixels do: with top equal to radius, that of (x, y)
//                  reaches from row y - 2 * radius to y
// Rounding         a variance below 0, which rounding makes of 0, is taken as 0
void LocalDeviation(const uint16_t* image, const double* squares, double* output, int32_t width,
                    int32_t height, int32_t radius, int32_t top, int32_t bottom);

// One quantising of a frame's local deviation.
struct DeviationCall {
    const uint16_t* image;  // width * height pixels
    int32_t width;
    int32_t height;
    int32_t radius;
    uint16_t* levels;  // as many, all 0 on entry
};

// Measures the deviation of a frame, the band being all but `radius` rows at top and bottom, and stretches
// it so that the smallest, margins of 0 included, becomes level 0 and the largest kTopDeviationLevel.
//
// Rounding   toward zero; a frame without variation gives 0 everywhere
// Squares    wrap in 32 signed bits above 46340, and a negative variance gives a deviation of 0
void QuantiseDeviation(const DeviationCall& call);

// One mix of a frame with its smoothed copy.
struct BlendCall {
    uint16_t* pixels;        // count pixels, changed in place
    const uint16_t* smooth;  // count
    const uint16_t* levels;  // count, each below weights.size()
    std::span<const double> weights;
    int64_t count;
};

// Makes each pixel smooth * (1 - weight) + pixel * weight, the weight being that of its level.
//
// weights    magnitudes up to 2^14, so that no result leaves 32 bits; 1 keeps the pixel, 0 takes `smooth`
// Rounding   toward zero, then the low 16 bits
void BlendByLevel(const BlendCall& call);

// QuantiseDeviation, which but for the reference asks for radius kDeviationRadius, and BlendByLevel.
struct DeviationLoops {
    void (*quantise)(const DeviationCall& call);
    void (*blend)(const BlendCall& call);
};

// A form of both.
using DeviationVariant = Variant<const DeviationLoops*>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const DeviationVariant> DeviationVariants();

// The definitions.
void QuantiseDeviationScalar(const DeviationCall& call);
void BlendByLevelScalar(const BlendCall& call);

#if VASTRELLINE_VECTOR_FORMS
void QuantiseDeviationBaseline(const DeviationCall& call);
void BlendByLevelBaseline(const BlendCall& call);
void QuantiseDeviationAvx2(const DeviationCall& call);
void BlendByLevelAvx2(const BlendCall& call);
void QuantiseDeviationAvx512(const DeviationCall& call);
void BlendByLevelAvx512(const BlendCall& call);
#endif

}  // namespace vastrelline
