// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Splits a frame into its finest detail, a band and the rest, and puts them together again. The band gets no
// gain, so the frame comes out as it was, clamped to 0..maxValue, whatever the other arguments are: results
// of mode 4 depend on it.
void BandDifferenceUnsharp(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, double sigma,
                           double ratio, double noise, int32_t reduce);

}  // namespace vastrelline
