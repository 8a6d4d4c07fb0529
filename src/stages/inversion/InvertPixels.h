// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "operators/curves/TonedFrame.h"

namespace vastrelline {

// Replaces every pixel by maxValue - pixel, in 16 bits: a pixel above maxValue wraps.
void InvertPixels(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue);
void InvertPixels(TonedFrame& frame, int32_t maxValue);

}  // namespace vastrelline
