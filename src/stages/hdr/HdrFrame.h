// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Compresses the dynamic range of a frame and lifts local contrast: equalises a copy tile by tile and fuses
// the frame with it, in place.
//
// maxValue              the equalisation's largest level; the frame lies within 0..maxValue
// blockSize             tile edge in pixels; 0 or less leaves the frame as it is, and so does one whose whole
//                       tiles would reach 2^29 pixels
// bins, clipLimit       of the equalisation, see ClaheEqualize; what it refuses is fused with itself
// edgeMax ... layerStep see FuseLayers; if it refuses, the frame stays as it is, without the equalisation
// Returns               1, always
int32_t HdrFrame(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t blockSize,
                 int32_t bins, double clipLimit, int32_t edgeMax, int32_t edgeOffset, float maxLambda,
                 float wfSlope, float alphaNorm, float alphaHe, int32_t layerStep);

}  // namespace vastrelline
