#include "sensor/SaturationCap.h"

#include <algorithm>

#include "pixels/FrameView.h"

namespace vastrelline {

void CapSaturation(uint16_t* pixels, int32_t width, int32_t height, int32_t saturationValue) {
    const FrameView<uint16_t> frame(pixels, width, height);
    uint16_t brightest = 0;
    for (const uint16_t pixel : frame) {
        if (pixel < saturationValue) brightest = std::max(brightest, pixel);
    }
    for (uint16_t& pixel : frame) pixel = std::min(pixel, brightest);
}

}  // namespace vastrelline
