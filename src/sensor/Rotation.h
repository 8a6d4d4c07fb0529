// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Turns a buffer of width * height pixels in place.
//
// angle     degrees, positive clockwise: 180, 90, -90, or 270, which is the same as -90. After a quarter turn
//           the buffer is `height` pixels wide and `width` high
// Returns   1, or 0 for any other angle, which leaves the buffer unchanged
// Memory    a copy of the buffer for the length of the call
int32_t RotateBuffer(uint16_t* buffer, int32_t width, int32_t height, int32_t angle);

// Mirrors a buffer of width * height pixels in place.
//
// mode      1: each row left to right; 2: the rows top to bottom; any other does nothing
// Returns   1
int32_t FlipBuffer(uint16_t* buffer, int32_t width, int32_t height, int32_t mode);

// Turns, then mirrors a frame in place. The mirror takes `width` and `height` as given, also after a quarter
// turn: on a frame that is not square the two together mirror with the row length of the unturned frame.
// Hosts depend on it; who wants both makes two calls.
//
// rotation   1: 90 degrees clockwise, 2: 90 degrees counterclockwise, 3: 180 degrees, else none
// flip       1: left to right, 2: top to bottom, 3: both, else none
// Returns    1; 0 for a null frame
// Sizes      0 or less: nothing to do, the result is 1
int32_t RotateAndFlip(uint16_t* frame, int32_t width, int32_t height, int32_t rotation, int32_t flip);

}  // namespace vastrelline
