// SPDX-License-Identifier: Apache-2.0
#include "sensor/PixelBits.h"

#include "config/CommonSettings.h"
#include "operators/curves/LinearCurve.h"
#include "operators/curves/LookupTable.h"
#include "pixels/FrameLimits.h"

namespace vastrelline {

namespace {

constexpr int32_t kPixelBits = 16;

}  // namespace

bool ArePixelsRescaled(int32_t bitsStored) { return bitsStored > kPixelBits; }

int32_t RescaleToPixelBits(uint16_t* pixels, int32_t width, int32_t height, int32_t& bitsStored) {
    const int32_t maxValue = MaxValueOfBits(bitsStored);
    if (!ArePixelsRescaled(bitsStored)) return maxValue;
    ApplyLookupTable(pixels, width, height,
                     BuildLinearCurve(pixels, width, height, maxValue, kTopPixel, 0, 0));
    bitsStored = kPixelBits;
    return kTopPixel;
}

}  // namespace vastrelline
