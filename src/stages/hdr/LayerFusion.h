// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Fuses a frame with its equalised version. In a fine layer the frame, in a coarse one a mix of both, is set
// off against its own Gaussian blur; the sum is stretched back to the frame's range.
//
// normalImage              width * height pixels: the frame, replaced by the result
// hedImage                 the equalised version, of the same size; not changed
// min, max                 the frame's extreme pixels, which the result keeps to
// edgeMax, edgeOffset      the layers' gains, see MakeLayerGains
// maxLambda                share of the equalised version in the coarse layer
// alphaNorm, alphaHe       shares of the blurred images that are taken away
// wfSlope, layerStep       no effect but for 0
// Edges                    the blur goes round to the opposite edge; the last row of an odd height and the
//                          last column of an odd width show entries of the spectrum in its place. The last
//                          row has no say in the range and is clamped to it
// Rounding                 truncation. Before it single precision, whose error stays below 1 level of 12
//                          bits
// Not a number             gives `min`: so does a flat frame, which comes out as it was
// Memory                   up to 16 bytes per pixel
// Returns                  1, or 0 with nothing changed: for a null image, for a 0 among edgeMax to
//                          layerStep, and for a frame so small that there are not two layers
int32_t FuseLayers(uint16_t* normalImage, const uint16_t* hedImage, int32_t width, int32_t height,
                   int32_t min, int32_t max, int32_t edgeMax, int32_t edgeOffset, float maxLambda,
                   float wfSlope, float alphaNorm, float alphaHe, int32_t layerStep);

}  // namespace vastrelline
