// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "config/SensorSettings.h"
#include "sensor/RowMask.h"

namespace vastrelline {

// Fills the empty mask of a delivered frame: 255 where a rounded corner hides the pixel. From the sensor's
// outline if the geometry has a known orientation and fits the frame's size, otherwise, and if the outline
// cannot be built, from the frame's own dark corners.
//
// frame     pixels of the mask's size, only read
// Returns   1
int32_t BuildMaskFromGeometry(const uint16_t* frame, RowMask& mask, const SensorGeometry& geometry);

// What BuildMaskFromGeometry finds the corners by.
enum class CornerSource : uint8_t {
    Geometry,         // alone: `frame` is not looked at
    Frame,            // its dark corners
    FrameAndMessage,  // the same, behind a message that the geometry is wrong
};

CornerSource SourceOfCorners(int32_t width, int32_t height, const SensorGeometry& geometry);

// The same with the geometry that stands in the profile.
int32_t BuildMaskFromProfile(const uint16_t* frame, RowMask& mask, const std::wstring& iniPath);

}  // namespace vastrelline
