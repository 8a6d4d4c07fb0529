#pragma once

#include <cstdint>

namespace vastrelline {

// Splits a frame into its finest detail, a band and the rest, and puts them together again. The band gets no
// gain, on purpose: the frame comes out as it was, held to 0..maxValue, whatever the other arguments are.
void BandDifferenceUnsharp(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, double sigma,
                           double ratio, double noise, int32_t reduce);

}  // namespace vastrelline
