#include "image/PixelRange.h"

#include <algorithm>

#include "image/FrameView.h"

namespace vastrelline {

int32_t MaxPixel(const uint16_t* pixels, int32_t width, int32_t height) {
    int32_t largest = 0;
    for (const uint16_t pixel : FrameView(pixels, width, height)) largest = std::max<int32_t>(largest, pixel);
    return largest;
}

int32_t MinPixel(const uint16_t* pixels, int32_t width, int32_t height) {
    int32_t smallest = 0x10000;
    for (const uint16_t pixel : FrameView(pixels, width, height)) {
        smallest = std::min<int32_t>(smallest, pixel);
    }
    return smallest;
}

}  // namespace vastrelline
