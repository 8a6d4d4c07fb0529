// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// A frame whose rows become the columns of another one: its pixel x of row y goes to pixel y of row x.
//
// source        the first of `height` rows of `width` pixels; sourceStride pixels lead from one to the next
// target        the first of `width` rows of `height` pixels; targetStride likewise; must not overlap
//               `source`
// Strides       below 0 where the rows are taken or written from the last to the first
struct TransposeCall {
    const uint16_t* source;
    ptrdiff_t sourceStride;
    uint16_t* target;
    ptrdiff_t targetStride;
    size_t width;
    size_t height;
};

// A form of the transposition.
using TransposeVariant = Variant<void (*)(const TransposeCall& call)>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const TransposeVariant> TransposeVariants();

// Turns a frame of width * height pixels by 90 degrees in place; then it is `height` pixels wide and `width`
// high.
//
// Memory   a copy of the frame, with gaps between its rows, for the length of the call
// Errors   none; a frame without pixels does nothing
void TurnByQuarter(uint16_t* pixels, int32_t width, int32_t height, bool isClockwise);

}  // namespace vastrelline
