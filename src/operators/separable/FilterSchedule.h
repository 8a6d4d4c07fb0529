// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include "operators/separable/HalvingFilter.h"
#include "operators/separable/RowFilter.h"
#include "operators/separable/SeparableFilter.h"

namespace vastrelline {

// The inner loops of the fast form of FilterFrame for one instruction set.
struct FilterKernels {
    // Filters `count` places of a line that begins half a kernel before the first place.
    void (*filterLine)(const double* line, int32_t count, const double* taps, int32_t size, double* out);
    // Makes four rows of the result from the size + 3 filtered rows that they see; size is at least 3.
    void (*makeFourRows)(const double* const* rows, const double* taps, int32_t size, uint16_t* out,
                         int32_t width, int32_t maxValue);
    // Makes one row of the result from the `size` filtered rows that it sees.
    void (*makeOneRow)(const double* const* rows, const double* taps, int32_t size, uint16_t* out,
                       int32_t width, int32_t maxValue);
    // Turns `count` pixels into doubles.
    void (*widenPixels)(const uint16_t* pixels, int32_t count, double* out);
    // Turns `count` pairs of pixels into doubles, their first ones and their second ones apart.
    void (*splitPixels)(const uint16_t* pixels, int32_t count, double* firsts, double* seconds);
    // Filters every second place of a line whose even and odd places lie apart: `count` of them, from 0 on.
    void (*filterEvenPlaces)(const double* evens, const double* odds, int32_t count, const double* taps,
                             int32_t size, double* out);
    // The most places beyond a row's end that these loops touch.
    int32_t slack;
};

// The index among `count` rows or columns for one that may lie beyond either end.
int32_t EdgeIndex(int32_t index, int32_t count, EdgeRule edges);

// Has row `row` of a frame, if it has one, come from memory while the one before is filtered: by itself the
// processor looks ahead to the end of a page only. Smaller frames are in a cache as a rule, and there it
// costs more than it saves. Inline, as GCC takes a call without an effect on values for one without any.
[[gnu::always_inline]] inline void FetchRow([[maybe_unused]] const uint16_t* pixels,
                                            [[maybe_unused]] int32_t width, [[maybe_unused]] int32_t height,
                                            [[maybe_unused]] int32_t row) {
#if defined(__GNUC__)
    constexpr int32_t kLine = 32;
    constexpr int64_t kLeastPixels = int64_t{1} << 22;
    if (row >= height || int64_t{width} * height < kLeastPixels) return;
    const uint16_t* first = pixels + static_cast<size_t>(row) * static_cast<size_t>(width);
    for (int32_t x = 0; x < width; x += kLine) __builtin_prefetch(first + x);
#endif
}

// Doubles from one filtered row to the next. An odd number of cache lines, so that rows do not crowd the same
// sets of the cache.
size_t FilteredRowStride(int32_t width, int32_t slack);

// The fast loops clamp pixels to 16 bits by saturation; for a larger maxValue the low bits count, and the
// plain form has to do it.
bool IsBeyondFastLoops(int32_t maxValue);

// FilterFrame with these loops: which rows are filtered when, where they are kept, and what lies beyond the
// edges.
void RunFilterSchedule(const FilterCall& call, const FilterKernels& kernels);

// FilterRows with these loops.
void RunRowSchedule(const RowFilterCall& call, const FilterKernels& kernels);

// FilterAndHalve with these loops.
void RunHalvingSchedule(const HalvingCall& call, const FilterKernels& kernels);

}  // namespace vastrelline
