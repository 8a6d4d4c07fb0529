// SPDX-License-Identifier: Apache-2.0
#include <cmath>

#include "pixels/Truncate.h"
#include "stages/adaptive_unsharp/SobelMagnitude.h"

namespace vastrelline {

void SobelRowScalar(const SobelRowCall& call) {
    for (int32_t i = 0; i < call.count; ++i) {
        const uint16_t* a = call.above + i;
        const uint16_t* c = call.centre + i;
        const uint16_t* b = call.below + i;
        const int32_t gx = (a[2] - a[0] + 2 * (c[2] - c[0]) + b[2] - b[0]) / 4;
        const int32_t gy = (b[0] + 2 * b[1] + b[2] - a[0] - 2 * a[1] - a[2]) / 4;
        const double square = static_cast<double>(gx) * gx + static_cast<double>(gy) * gy;
        call.magnitudes[i] = LowBits16(TruncateToInt32(std::sqrt(square)));
    }
}

}  // namespace vastrelline
