// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Whether frames of so many significant bits have more than a pixel holds.
bool ArePixelsRescaled(int32_t bitsStored);

// Brings a frame of more significant bits than a pixel holds into 16 bits, in place, by a straight ramp; any
// other frame stays as it is.
//
// bitsStored   significant bits of the frame; above 16 it becomes 16
// Returns      the frame's largest pixel value from then on
int32_t RescaleToPixelBits(uint16_t* pixels, int32_t width, int32_t height, int32_t& bitsStored);

}  // namespace vastrelline
