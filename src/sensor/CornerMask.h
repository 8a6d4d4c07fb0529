#pragma once

#include <cstdint>
#include <string>

#include "config/SensorSettings.h"

namespace vastrelline {

// Fills the zeroed mask of a delivered frame: 255 where a rounded corner hides the pixel. From the sensor's
// outline if the geometry has a known orientation and fits the frame's size, otherwise, and if the outline
// cannot be built, from the frame's own dark corners.
//
// frame, mask   width * height pixels each; `frame` is only read
// Returns       1
int32_t BuildMaskFromGeometry(const uint16_t* frame, uint16_t* mask, int32_t width, int32_t height,
                              const SensorGeometry& geometry);

// Whether the mask follows from the geometry alone: then `frame` is not looked at, and no message shown.
bool AreCornersKnown(int32_t width, int32_t height, const SensorGeometry& geometry);

// The same with the geometry that stands in the profile.
int32_t BuildMaskFromProfile(const uint16_t* frame, uint16_t* mask, int32_t width, int32_t height,
                             const std::wstring& iniPath);

}  // namespace vastrelline
