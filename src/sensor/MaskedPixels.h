// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"
#include "sensor/RowMask.h"

namespace vastrelline {

// The value of a mask where the sensor's rounded corner hides the pixel.
inline constexpr uint16_t kMasked = 255;

// Fills the masked corners, in place, so that filters see no edge there: each run of masked pixels of a row
// takes the mirror image of the pixels just inside it, separately for the left and the right half.
//
// frame, mask   width * height pixels each
// maxValue      without effect
// Even widths   the last column is visited twice
void FillMaskedPixels(uint16_t* frame, const uint16_t* mask, int32_t width, int32_t height, int32_t maxValue);

// Gives masked pixels the background value, in place.
//
// frame     pixels of the mask's size
// flag      not 0: the frame was inverted, and the background is 0; 0: it is the frame's largest pixel
// Markers   the first two pixels in memory, where masked, take 4095: they keep the full range in the frame
void RestoreMaskedPixels(uint16_t* frame, const RowMask& mask, int32_t flag);

// The loops of a form.
struct MaskedPixelLoops {
    // FillMaskedPixels for one row.
    void (*fillRow)(uint16_t* row, const uint16_t* maskRow, int32_t width);

    // Sets `count` pixels to `value` where masked.
    void (*paint)(uint16_t* pixels, const uint16_t* mask, size_t count, uint16_t value);
};
using MaskedPixelsVariant = Variant<const MaskedPixelLoops*>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const MaskedPixelsVariant> MaskedPixelsVariants();

}  // namespace vastrelline
