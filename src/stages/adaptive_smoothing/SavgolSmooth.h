// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Reduces noise and keeps the shape of the signal, in place: a least-squares smoothing kernel under
// a Gaussian taper, along the rows, then along the columns.
//
// maxValue   the largest value stored; below 0 is stored as 0
// mask       taps, odd in use; an even number has one tap less on the right. Below 2, or so wide that the
//            frame with the kernel's reach around it would have 2^29 pixels or more: the frame stays as it is
// order      degree of the fitted polynomial; one that the mask cannot carry leaves the taper alone, and one
//            whose taps are no numbers leaves the frame as it is
// Edges      wrap-around in both directions
// Rounding   none between the passes, truncation toward zero at the end
void SavgolSmooth(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t mask,
                  int32_t order);

}  // namespace vastrelline
