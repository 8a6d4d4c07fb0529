// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "pixels/OwnedFrame.h"
#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// Resamples a frame bilinearly. Backward mapping with the origin at the top-left pixel, without a half-pixel
// shift: pixel (x, y) of the result reads the source at (x / scale, y / scale).
//
// source    width * height pixels
// scale     above 0; the result has trunc(width * scale) by trunc(height * scale) pixels
// Edges     a place on the last source row or column takes the source pixel at its whole part, without
//           interpolation in either direction; a place outside gives 0
// Rounding  truncation toward zero of a sum in doubles
// Errors    std::length_error as CountElements
OwnedFrame ResizeBilinear(const uint16_t* source, int32_t width, int32_t height, double scale);

// Smooths a frame, in place, by a Gaussian at reduced resolution.
//
// sigma    at full resolution, in pixels
// factor   by which the resolution is reduced; below 1, and so large that the extended frame would pass 2^29
//          pixels: the frame stays as it is. So it does where GaussFilterReplicate would leave the reduced
//          frame: going down and up alone is no smoothing
// Edges    extended to whole multiples of the factor by the last row and column; the Gaussian repeats the
//          edge pixels
// Memory   the reduced frame for the length of the call; for sides that are no multiples of the factor the
//          extended frame too, and at a factor of 2 the enlarged one; at other factors some 50 bytes for each
//          column
void ReducedScaleGaussian(uint16_t* buffer, int32_t width, int32_t height, int32_t maxValue, double sigma,
                          int32_t factor);

// One resampling into a raster of the result's size.
struct ResizeCall {
    const uint16_t* source;
    int32_t width;
    int32_t height;
    double scale;
    uint16_t* result;
    int32_t resultWidth;
    int32_t resultHeight;
};

// A form of the resampling.
using ResizeVariant = Variant<void (*)(const ResizeCall& call)>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const ResizeVariant> ResizeVariants();

// The definition.
void ResizeFrameScalar(const ResizeCall& call);

#if VASTRELLINE_VECTOR_FORMS
void ResizeFrameBaseline(const ResizeCall& call);
void ResizeFrameAvx2(const ResizeCall& call);
#endif

}  // namespace vastrelline
