// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_smoothing/SmoothingModes.h"

#include "pixels/Truncate.h"
#include "stages/adaptive_smoothing/DeviationSmooth.h"
#include "stages/adaptive_smoothing/SavgolSmooth.h"

namespace vastrelline {

void SmoothByMode(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                  const AdaptiveSmoothingParams& params) {
    const double mask = params.ADAPTIVESMOOTHING_MASK;
    const int32_t order = params.ADAPTIVESMOOTHING_ORDER;
    switch (static_cast<SmoothingMode>(params.ADAPTIVESMOOTHING_Mode)) {
        case SmoothingMode::Savgol:
            SavgolSmooth(pixels, width, height, maxValue, TruncateToInt32(mask), order);
            break;
        case SmoothingMode::Deviation:
            DeviationWeightedSmooth(pixels, width, height, maxValue, mask, order);
            break;
        default:
            break;
    }
}

}  // namespace vastrelline
