#pragma once

#include <cstdint>

#include "image/BoxMean.h"

namespace vastrelline {

// Division by a window as a product: sum / window == (sum * factor) >> 32 >> shift for each sum below 2^31.
struct WindowDivision {
    uint32_t factor;
    int32_t shift;
};

WindowDivision MakeWindowDivision(int32_t window);

// The inner loops of the fast form of BoxMean for one instruction set.
struct BoxMeanKernels {
    // Makes the means of a line. `sum` is that of the window before the first place; place i takes in
    // entering[i] and lets go leaving[i]. Touches up to `slack` places beyond the ends of all three.
    void (*meanLine)(uint32_t sum, const uint16_t* entering, const uint16_t* leaving, int32_t count,
                     WindowDivision division, uint16_t* means);
    // Moves the sums of `count` columns down by one row and makes their means. Touches nothing beyond.
    void (*meanColumns)(uint32_t* sums, const uint16_t* entering, const uint16_t* leaving, int32_t count,
                        WindowDivision division, uint16_t* means);
    int32_t slack;
};

// BoxMean with these loops: which rows are averaged when, and where they are kept.
void RunBoxMeanSchedule(const BoxMeanCall& call, const BoxMeanKernels& kernels);

}  // namespace vastrelline
