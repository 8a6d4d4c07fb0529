// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "operators/median/MedianFilter.h"

namespace vastrelline {

// The sorting network for one window, built for one instruction set.
struct MedianKernel {
    int32_t windowWidth;
    int32_t windowHeight;
    // Runs a call of at least two rows and as many columns as a vector has lanes.
    void (*run)(const MedianCall& call, uint16_t* scratch);
};

// Filters by the network for the call's window; by counting if there is none or the call is too small.
//
// lanes           of a vector
// scratchPixels   that the networks need
void RunMedianSchedule(const MedianCall& call, std::span<const MedianKernel> kernels, size_t lanes,
                       size_t scratchPixels);

}  // namespace vastrelline
