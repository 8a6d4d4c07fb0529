// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "pixels/Truncate.h"
#include "stages/pre_contrast/PreContrast.h"

namespace vastrelline {

void AmplifyDifferenceScalar(const AmplifyCall& call) {
    for (size_t i = 0; i < call.count; ++i) {
        const int32_t smoothed = call.smoothed[i];
        const int32_t difference = call.image[i] - smoothed;
        const int32_t amplified = TruncateToInt32(smoothed + difference * call.ratio);
        call.image[i] = LowBits16(std::min(std::max(amplified, 0), call.maxValue));
    }
}

}  // namespace vastrelline
