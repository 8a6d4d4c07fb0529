// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// The smallest and the largest pixel of an image. An empty one has 65536, one above any pixel, and 0.
struct PixelRange {
    int32_t smallest;
    int32_t largest;
};

// The range of width * height pixels, in one pass.
PixelRange FindPixelRange(const uint16_t* pixels, int32_t width, int32_t height);

// One end of the range alone. Asking for both ends at once costs no more than for one.
int32_t MaxPixel(const uint16_t* pixels, int32_t width, int32_t height);
int32_t MinPixel(const uint16_t* pixels, int32_t width, int32_t height);

// A form of the search.
using PixelRangeVariant = Variant<PixelRange (*)(const uint16_t* pixels, size_t count)>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const PixelRangeVariant> PixelRangeVariants();

}  // namespace vastrelline
