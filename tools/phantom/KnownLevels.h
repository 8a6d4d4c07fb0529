// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "phantom/PhantomRandom.h"

namespace vastrelline {

// The levels that the phantoms of known numbers have to keep to, and their noise.
struct KnownLevels {
    double low = 0.0;  // of the darkest and the brightest area, 0 <= low < high <= topLevel
    double high = 0.0;
    int32_t topLevel = 0;  // of the frame: 4095 for 12 bits
    uint64_t seed = 1;     // of the noise
};

// The noise never exceeds this many deviations: levels that keep this distance from 0 and from the top are
// never cut.
inline constexpr double kNoiseReach = 6.0;

// A pixel of this level with normal noise, rounded to nearest: the rounding adds 1/12 to the noise's
// variance.
//
// sigma   standard deviation in levels, 0 or more; 0 takes no random number
uint16_t NoisyPixel(double level, double sigma, int32_t topLevel, PhantomRandom& random);

}  // namespace vastrelline
