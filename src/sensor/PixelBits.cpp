#include "sensor/PixelBits.h"

#include "config/CommonSettings.h"
#include "operators/curves/LinearCurve.h"

namespace vastrelline {

int32_t RescaleToPixelBits(uint16_t* pixels, int32_t width, int32_t height, int32_t& bitsStored) {
    constexpr int32_t kPixelBits = 16;
    constexpr int32_t kTopPixel = 0xFFFF;
    const int32_t maxValue = MaxValueOfBits(bitsStored);
    if (bitsStored <= kPixelBits) return maxValue;
    ApplyLinearCurve(pixels, width, height, maxValue, kTopPixel, 0, 0, 0, L"", 0);
    bitsStored = kPixelBits;
    return kTopPixel;
}

}  // namespace vastrelline
