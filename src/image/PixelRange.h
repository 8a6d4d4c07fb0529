#pragma once

#include <cstdint>

namespace vastrelline {

// The largest of width * height pixels; 0 for an empty image.
int32_t MaxPixel(const uint16_t* pixels, int32_t width, int32_t height);

// The smallest of width * height pixels; 65536, one above any pixel, for an empty image.
int32_t MinPixel(const uint16_t* pixels, int32_t width, int32_t height);

}  // namespace vastrelline
