#pragma once

#include <cstdint>

#include "image/SeparableFilter.h"

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
    // The most places beyond a row's end that these loops touch.
    int32_t slack;
};

// FilterFrame with these loops: which rows are filtered when, where they are kept, and what lies beyond the
// edges.
void RunFilterSchedule(const FilterCall& call, const FilterKernels& kernels);

}  // namespace vastrelline
