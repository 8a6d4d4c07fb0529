// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// How the mid-band is taken and lifted. The last four belong to a map of the difference, which cannot run: it
// wants a smallest difference of 1 or more, and its search starts at 0. They have no effect.
struct MidBandParams {
    double sigma;  // of the smoothing that separates the mid-band, in pixels
    double gain;
    float alpha;
    float weight;
    float power;
    float range;
};

// Lifts the medium-scale structure of a frame, in place, and leaves its finest detail as it is.
//
// buffer   width * height pixels; clamped to maxValue, then to 0
void EnhanceMidBand(uint16_t* buffer, int32_t width, int32_t height, int32_t maxValue,
                    const MidBandParams& params);

// The inner step: the frame becomes its smoothed copy plus `gain` times the difference to it, in place.
//
// smoothing   -1: a box mean, whose radius follows from sigma and is halved for widths below 1000; 1, or any
//             that would reduce sigma below 0.5: a Gaussian with repeated edges; any other: a Gaussian at
//             resolution reduced by this factor
// Rounding    truncation in doubles, then clamped to maxValue, then to 0
void MidBandBoost(uint16_t* buffer, int32_t width, int32_t height, int32_t maxValue,
                  const MidBandParams& params, int32_t smoothing);

// The smoothing of MidBandBoost that takes the box mean.
inline constexpr int32_t kBoxSmoothing = -1;

// The radius of that box mean, in pixels: always odd, and below 0 for most sigmas without a kernel, which
// smooth nothing.
int32_t MidBandRadius(double sigma, int32_t width);

}  // namespace vastrelline
