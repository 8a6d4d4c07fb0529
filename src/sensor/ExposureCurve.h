// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "config/SensorSettings.h"
#include "operators/curves/TonedFrame.h"
#include "sensor/RowMask.h"

namespace vastrelline {

// Clips the highlights of a raw frame above a level that follows from the frame, and lifts very dark frames
// through a power curve, in place.
//
// frame          width * height pixels of 12 bits; pixels of 4096 or more count as level 4095
// lowKnee        of 4095: where in the frame's span the lift ends. It acts only where that level lies below
//                lowKnee itself
// highKnee       of 4095: where in the span the clip begins, at level 1800 at the lowest
// liftExponent   the lift is a power of 1 - liftExponent
// reserved       without effect
// profilePath    the processing profile, which gives the geometry if `geometry` is null
// geometry       the caller's geometry of this frame, or null
// Corners        pixels under the sensor's rounded corners do not count for the clip
void ApplyExposureCurve(uint16_t* frame, int32_t width, int32_t height, int32_t lowKnee, int32_t highKnee,
                        double liftExponent, double reserved, const std::wstring& profilePath,
                        const SensorGeometry* geometry);
void ApplyExposureCurve(TonedFrame& frame, int32_t lowKnee, int32_t highKnee, double liftExponent,
                        double reserved, const std::wstring& profilePath, const SensorGeometry* geometry);

// Levels that hold the outermost hundredth of a frame's pixels.
//
// mask   width * height pixels; a pixel whose mask is not 0 is not counted, but the hundredth is one of all
// low    the level at which the count from 0 up passes it, 4096 if none does
// high   the level at which the count from 4095 down passes it, 0 if none does
void MeasureClipLevels(const uint16_t* frame, const uint16_t* mask, int32_t width, int32_t height,
                       uint16_t& low, uint16_t& high);
void MeasureClipLevels(TonedFrame& frame, const RowMask& mask, uint16_t& low, uint16_t& high);

// Marks the dark corners of a frame with 1 in an empty mask of its size, from the first and the last pixel of
// its rows: a pixel above 10 is exposed.
//
// cutOff        rows that are searched at the top, and the size of a corner that the search does not find
// cutOffRight   without effect
// Corners at the top have the size of the first exposed row. Corners at the bottom are found from the bottom
// up, yet their size is the row's number from the top; results depend on it. A mark never leaves its row.
void DetectCornerMask(const uint16_t* frame, RowMask& mask, int32_t cutOff, int32_t cutOffRight);

}  // namespace vastrelline
