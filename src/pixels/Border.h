// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"

namespace vastrelline {

// Where the added border lies.
enum class BorderMode : int32_t {
    BorderTrailing = 0,  // all of it at the right and at the bottom
    BorderCentred = 1,   // half of it, rounded down, at the left and at the top, the rest opposite
};

// A copy of an image with a border that repeats the nearest edge pixel.
//
// source               width * height pixels; not changed
// padWidth, padHeight  what the border adds to the width and to the height; 0, 0 gives a plain copy
// mode                 a value that is no BorderMode gives an all-zero image of the padded size, but for
//                      pads of 0, 0
// Returns              (width + padWidth) * (height + padHeight) pixels; none if `source` is null or both
//                      pads are negative. With one negative pad, what lies outside the result is left out
// Errors               std::length_error as CountElements
std::optional<ScratchVector<uint16_t>> ExtendImage(const uint16_t* source, int32_t width, int32_t height,
                                                   int32_t padWidth, int32_t padHeight, BorderMode mode);

// Repeats the nearest pixel from `width` and `height` on, at the right and at the bottom of a frame of which
// only that much is there.
//
// width, height   of at least 1
void FillTrailingBorder(const FrameView<uint16_t>& padded, int32_t width, int32_t height);

// Takes the border off again: the inverse of ExtendImage with the same pads and mode.
//
// padded        paddedWidth * paddedHeight pixels
// destination   (paddedWidth - padWidth) * (paddedHeight - padHeight) pixels; must not overlap `padded`
// Errors        none; a null `padded`, a negative pad, a pad beyond the padded size or a value that is no
//               BorderMode do nothing (the last but for pads of 0, 0)
void CropImage(const uint16_t* padded, uint16_t* destination, int32_t paddedWidth, int32_t paddedHeight,
               int32_t padWidth, int32_t padHeight, BorderMode mode);

}  // namespace vastrelline
