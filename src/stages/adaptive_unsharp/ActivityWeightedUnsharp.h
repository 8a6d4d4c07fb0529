// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Sharpens a frame, in place, with a gain that depends on brightness and on local activity: none in the
// darkest areas, falling again to none in the upper quarter of the brightness, and none in busy areas. A
// frame whose base or whose activity has less than 10 levels only gets the upper limit.
//
// radius         of the box means whose difference is the activity; 0 and less give none at all
// baseRadius     of the box mean that the brightness and the detail are taken from; 0 and less take the frame
//                itself, so that there is no first term of detail
// secondRadius   of the box mean of a second term of detail; 0 and less leave it out
// gain           of the detail
// secondGain     of the second term; 0 and less leave it out
// Result         its low 16 bits, then clamped to maxValue. So a sum a little below 0 wraps and comes out as
//                maxValue, or near the top of 16 bits: results depend on it
void ActivityWeightedUnsharp(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, int32_t radius,
                             int32_t baseRadius, int32_t secondRadius, double gain, double secondGain);

}  // namespace vastrelline
