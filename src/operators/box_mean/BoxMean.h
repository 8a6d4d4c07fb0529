// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// An index limited to 0..count - 1: the nearest of `count` elements, which number at least 1.
inline int32_t ClampIndex(int64_t index, int32_t count) {
    if (index < 0) return 0;
    return index >= count ? count - 1 : static_cast<int32_t>(index);
}

// Mean over a square window of 2 * radius + 1 pixels: all rows first, then all columns. The cost does not
// grow with the radius.
//
// source, destination  width * height pixels each, rows from the top, stride width; must not overlap
// radius               pixels; 0 and less copy; any other is fine, also one beyond the frame
// Edges                the nearest edge pixel is repeated
// Rounding             both passes divide in integers and round down: each loses less than one level
// Errors               none; a null destination or source and an empty frame do nothing
void BoxMean(const uint16_t* source, uint16_t* destination, int32_t width, int32_t height, int32_t radius);

// The same, in place.
void BoxMeanInPlace(uint16_t* buffer, int32_t width, int32_t height, int32_t radius);

// One box mean of a frame with at least one pixel.
struct BoxMeanCall {
    const uint16_t* source;
    uint16_t* destination;  // may be the source
    int32_t width;
    int32_t height;
    int32_t radius;  // 1 or more
};

// A form of the box mean.
using BoxMeanVariant = Variant<void (*)(const BoxMeanCall& call)>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const BoxMeanVariant> BoxMeanVariants();

// The definition.
void BoxMeanScalar(const BoxMeanCall& call);

#if VASTRELLINE_VECTOR_FORMS
void BoxMeanBaseline(const BoxMeanCall& call);
void BoxMeanAvx2(const BoxMeanCall& call);
void BoxMeanAvx512(const BoxMeanCall& call);
#endif

}  // namespace vastrelline
