// SPDX-License-Identifier: Apache-2.0
#include "operators/median/MedianFilter.h"

#include <algorithm>
#include <cstddef>

namespace vastrelline {

namespace {

constexpr MedianVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, FilterMedianScalar},
    {"histogram", InstructionSet::Reference, FilterMedianHistogram},
    {"columns", InstructionSet::Reference, FilterMedianColumns},
    {"counted", InstructionSet::Reference, FilterMedianCounted},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, FilterMedianBaseline},
    {"avx2", InstructionSet::Avx2, FilterMedianAvx2},
    {"avx512", InstructionSet::Avx512, FilterMedianAvx512},
#endif
};

// Sorting is quadratic for a window of equal pixels: a flat frame takes seconds at this many, and minutes at
// ten times as many. Beyond it counting takes its place even where the plain forms are asked for.
constexpr int64_t kMostPixelsSorted = int64_t{9} * 9;

// Measured on radiographs and on noise: from a square of this side on a histogram of the whole window takes
// longer than one for each column. It pays for the shorter side of the window only.
constexpr int32_t kLeastSideForColumns = 64;

}  // namespace

std::span<const MedianVariant> MedianVariants() { return AllowedVariants(kVariants); }

void FilterMedianWith(const MedianVariant& variant, const MedianCall& call) {
    const int32_t halfWidth = call.windowWidth / 2;
    const int32_t halfHeight = call.windowHeight / 2;
    MedianCall inside = call;
    inside.firstRow = std::max(call.firstRow, halfHeight);
    inside.lastRow = std::min(call.lastRow, call.height - halfHeight - 1);
    if (inside.firstRow > inside.lastRow || halfWidth >= call.width - halfWidth) return;
    variant.run(inside);
}

void FilterMedianCounted(const MedianCall& call) {
    const bool isLarge = std::min(call.windowWidth, call.windowHeight) >= kLeastSideForColumns;
    (isLarge ? FilterMedianColumns : FilterMedianHistogram)(call);
}

void FilterMedian(const MedianCall& call) {
    // Asked for, not merely all there is: a machine without vector forms counts.
    const bool isPlain = AllowedInstructionSet() == InstructionSet::Reference &&
                         DetectInstructionSet() != InstructionSet::Reference &&
                         int64_t{call.windowWidth} * call.windowHeight <= kMostPixelsSorted;
    FilterMedianWith(isPlain ? MedianVariants().front() : FastestOf(MedianVariants()), call);
}

}  // namespace vastrelline
