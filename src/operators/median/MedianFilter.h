// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// One median filter of a range of rows, out of place.
struct MedianCall {
    const uint16_t* source;  // width * height
    uint16_t* destination;   // likewise; must not overlap the source
    int32_t width;
    int32_t height;
    int32_t windowWidth;   // 1 or more; the window reaches windowWidth / 2 pixels to the left
    int32_t windowHeight;  // 1 or more; the window reaches windowHeight / 2 pixels up
    int32_t firstRow;      // of the destination, inclusive
    int32_t lastRow;       // inclusive
};

// Writes the windows' middle values: of `count` values in ascending order the one with index count / 2.
// Pixels closer to an edge than half a window, windowWidth / 2 on the left and right and windowHeight / 2
// above and below, are not written.
void FilterMedian(const MedianCall& call);

// A form of FilterMedian. Each is run with rows that all have their windows inside the frame, and at least
// one such row and column.
using MedianVariant = Variant<void (*)(const MedianCall& call)>;

// All forms that this machine can run, the reference first and the fastest last. From the baseline on they
// have sorting networks for the usual windows and count for all others.
std::span<const MedianVariant> MedianVariants();

// Runs one form, as FilterMedian does.
void FilterMedianWith(const MedianVariant& variant, const MedianCall& call);

// The definition: gathers and sorts each window.
void FilterMedianScalar(const MedianCall& call);

// A histogram of the window that moves with it, for windows of any size.
void FilterMedianHistogram(const MedianCall& call);

// A histogram of each column's part of the window: what a pixel costs hardly depends on the window's size.
void FilterMedianColumns(const MedianCall& call);

// One of these two, whichever is quicker for the window.
void FilterMedianCounted(const MedianCall& call);

#if VASTRELLINE_VECTOR_FORMS
void FilterMedianBaseline(const MedianCall& call);
void FilterMedianAvx2(const MedianCall& call);
void FilterMedianAvx512(const MedianCall& call);
#endif

}  // namespace vastrelline
