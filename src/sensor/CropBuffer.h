// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixels/ScratchVector.h"

namespace vastrelline {

// Element types of an untyped buffer.
enum class ElementType : int32_t {
    Unsigned16 = 0,
    Signed16 = 1,
    Signed32 = 2,
    Float64 = 3,
    Unsigned8 = 4,
};

// Cuts a rectangle out of a buffer.
//
// source                      sourceWidth * sourceHeight elements
// left, top, width, height    the rectangle, in elements; what of it lies outside the source is 0
// Returns                     width * height elements; for a value that is no ElementType as many of 2 bytes,
//                             all 0
// Errors                      a negative size, a row of 2^31 bytes or 2^32 bytes in all: std::length_error
ScratchVector<std::byte> CropBuffer(const void* source, int32_t sourceWidth, int32_t sourceHeight,
                                    int32_t left, int32_t top, int32_t width, int32_t height,
                                    ElementType elementType);

}  // namespace vastrelline
