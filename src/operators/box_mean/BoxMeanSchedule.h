// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "operators/box_mean/BoxMean.h"

namespace vastrelline {

// Division by a window as a product: for sums of 32 bits (sum * factor) >> 32 >> shift, for sums of 16 bits
// (sum * factor) >> 16 >> shift.
struct WindowDivision {
    uint32_t factor;
    int32_t shift;
};

// Exact for each sum below 2^31.
WindowDivision MakeWindowDivision(int32_t window);

// Exact for each sum of a window of pixels up to `largestPixel`; none if such a sum does not fit 16 bits or
// there is no such product.
std::optional<WindowDivision> MakeNarrowWindowDivision(int32_t window, int32_t largestPixel);

inline uint16_t DivideByWindow(uint32_t sum, WindowDivision division) {
    return static_cast<uint16_t>(uint64_t{sum} * division.factor >> 32U >> division.shift);
}

inline uint16_t DivideByWindow(uint16_t sum, WindowDivision division) {
    return static_cast<uint16_t>(sum * division.factor >> 16U >> division.shift);
}

// The inner loops of the fast form of BoxMean for one instruction set and one width of sums.
template <typename Sum>
struct BoxMeanLoops {
    // Makes the means of a line. `sum` is that of the window before the first place; place i takes in
    // entering[i] and lets go leaving[i]. Touches up to `slack` places beyond the ends of all three.
    void (*meanLine)(Sum sum, const uint16_t* entering, const uint16_t* leaving, int32_t count,
                     WindowDivision division, uint16_t* means);
    // Moves the sums of `count` columns down by one row and makes their means. Touches nothing beyond.
    void (*meanColumns)(Sum* sums, const uint16_t* entering, const uint16_t* leaving, int32_t count,
                        WindowDivision division, uint16_t* means);
    int32_t slack;
};

struct BoxMeanKernels {
    BoxMeanLoops<uint16_t> narrow;
    BoxMeanLoops<uint32_t> wide;
};

// BoxMean with these loops: which rows are averaged when, and where they are kept. The narrow ones serve
// where the frame's largest pixel lets them, as 12 bits do up to the radius 7.
void RunBoxMeanSchedule(const BoxMeanCall& call, const BoxMeanKernels& kernels);

}  // namespace vastrelline
