// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace vastrelline {

// Where a histogram of detail values is divided: below `left` and above `right` lie its tails.
struct DetailSegments {
    int32_t left;   // 0 if there is none
    int32_t right;  // 0 if there is none
};

// Divides a histogram of detail values around its peak, the first of its largest bins from `lo` up to but not
// including `hi`. The limit is the mean of ten bins on either side of the peak, those beside it left out,
// times noise / 100, truncated. From the peak, which is tested itself, down to but not including `lo`, and up
// to but not including `hi`, the first bin that is not empty and below the limit divides.
//
// histogram   bins outside it count as empty
// noise       percent; at 0 no bin divides
DetailSegments FindDetailSegments(std::span<const uint32_t> histogram, int32_t lo, int32_t hi, int32_t noise);

// Enhances the middle band of a frame's detail, in place: detail, which is what a Gaussian takes away, goes
// through a stretch curve over its own histogram, and `ratio` times the result is put on the smoothed frame.
//
// sigma    of the Gaussian, in pixels; edge pixels are repeated
// ratio    gain of the detail
// noise    percent, for FindDetailSegments
// mask     width * height values 0..255, or null for none; changed: smoothed by a Gaussian that wraps around.
//          Where it is 255 the frame stays, where it is 0 the result counts, between they are mixed
// Result   truncated toward zero and clamped to 0..maxValue
void ShapeDetail(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, double sigma,
                 double ratio, int32_t noise, uint16_t* mask);

}  // namespace vastrelline
