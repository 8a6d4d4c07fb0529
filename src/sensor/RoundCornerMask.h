// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "pixels/ScratchVector.h"
#include "sensor/CornerOutline.h"
#include "sensor/RowMask.h"

namespace vastrelline {

// How the sensor's rounded corners, built at the bottom, lie in the delivered frame.
enum OrientationCode : int32_t {
    kOrientationUnknown = -1,
    kAsBuilt = 0,
    kTurnedHalf = 1,
    kTurnedClockwise = 2,         // by 90 degrees: the sides of the full frame swap
    kTurnedCounterclockwise = 3,  // by -90 degrees: the sides of the full frame swap
};

// The code of a delivered frame, from how it was turned (0, 1, 2) and mirrored (0..3); anything else is
// unknown.
int32_t ComputeOrientationCode(int32_t rotation, int32_t flip);

// Builds the mask of a frame from the sensor's outline: 255 where a rounded corner hides the pixel, else 0.
//
// frameWidth, frameHeight   the full sensor frame, unturned, in pixels
// cutOff                    size of the chamfer of each corner; at most half of the shorter side. 0 or less:
//                           no chamfer
// cutOffRight               size of the exponential outline; at most the shorter side. 0 or less: chamfer
//                           alone
// orientation               an OrientationCode, not unknown
// cutLeft, cutTop           where the delivered frame begins in the turned full frame
// width, height             the delivered frame
// Returns                   the mask, 0 where the full frame does not reach. None for corners
//                           that are too large, which also shows a message, and for a full frame of 2^29
//                           pixels or more
// Memory                    that of the delivered frame alone, however large the full one
std::optional<RowMask> BuildRoundCornerMask(int32_t frameWidth, int32_t frameHeight, int32_t cutOff,
                                            int32_t cutOffRight, int32_t orientation, int32_t cutLeft,
                                            int32_t cutTop, int32_t width, int32_t height);

// The outline of the corners; none where BuildRoundCornerMask gives no mask, with its message.
std::optional<CornerOutline> MakeCornerOutline(int32_t frameWidth, int32_t frameHeight, int32_t cutOff,
                                               int32_t cutOffRight);

// Whether there is one; without a message.
bool HasCornerOutline(int32_t frameWidth, int32_t frameHeight, int32_t cutOff, int32_t cutOffRight);

// BuildRoundCornerMask into the empty mask of a delivered frame.
void MarkRoundCorners(RowMask& mask, const CornerOutline& outline, int32_t orientation, int32_t cutLeft,
                      int32_t cutTop);

// The definition of the same: draws the outline on the whole full frame, turns that and cuts the delivered
// frame out of it.
ScratchVector<uint16_t> DrawRoundCorners(const CornerOutline& outline, int32_t orientation, int32_t cutLeft,
                                         int32_t cutTop, int32_t width, int32_t height);

// Marks the dark corners of a frame from its content: 255 in `mask`, empty before, where a pixel of exactly 0
// lies in one of two corner triangles of 170 pixels. A frame higher than wide has its corners at the top or
// at the bottom, any other at the left or at the right: where more pixels are 0, and on a tie at the bottom
// or at the right.
//
// Returns   1
int32_t MarkCornerTriangles(const uint16_t* frame, RowMask& mask);

}  // namespace vastrelline
