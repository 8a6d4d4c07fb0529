// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// What a filter sees beyond the edges of the frame.
enum class EdgeRule : int32_t {
    Wrap,       // the opposite edge, as often as it takes
    Replicate,  // the nearest edge pixel
};

// One filter of a frame with a kernel along the rows, then along the columns.
struct FilterCall {
    uint16_t* pixels;  // width * height, changed in place
    int32_t width;
    int32_t height;
    int32_t maxValue;
    std::span<const double> kernel;  // centre at size / 2; an even number has one tap less on the right
    EdgeRule edges;
};

// Filters a frame in place.
//
// pixels     width * height pixels
// maxValue   the largest value stored; below 0 is stored as 0
// kernel     `size` taps, centre at size / 2; an even number works with one tap less on the right
// Edges      wrap-around in both directions, as often as a small frame takes
// Order      doubles; each pass starts from 0.0 and adds pixel * tap with taps ascending, multiply and add
//            rounded separately
// Rounding   none between the passes, truncation toward zero at the end
// Errors     none; an empty frame or kernel does nothing
void SeparableFilter(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, const double* kernel,
                     int32_t size);

// The same with an edge rule of choice.
void FilterFrame(const FilterCall& call);

// Gaussian smoothing, in place. A sigma that is not above 0 takes a fixed kernel of five taps whose sum is a
// little above 1. One so large that the frame extended by the kernel's reach would have 2^29 pixels or more
// leaves the frame as it is.
//
// sigma   standard deviation in pixels
// Edges   wrap-around
void GaussFilterWrap(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, double sigma);

// Gaussian smoothing, in place, with the edge pixels repeated as far as the kernel reaches. A sigma of 0, or
// below it by less than 0.4, has no reach and so acts as GaussFilterWrap; one further below, or not a number,
// leaves the frame as it is, as does one too large for GaussFilterWrap.
void GaussFilterReplicate(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, double sigma);

// A form of FilterFrame.
using FilterVariant = Variant<void (*)(const FilterCall& call)>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const FilterVariant> FilterVariants();

// The definition.
void FilterFrameScalar(const FilterCall& call);

#if VASTRELLINE_VECTOR_FORMS
void FilterFrameBaseline(const FilterCall& call);
void FilterFrameAvx2(const FilterCall& call);
void FilterFrameAvx512(const FilterCall& call);
#endif

}  // namespace vastrelline
