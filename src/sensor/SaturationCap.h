#pragma once

#include <cstdint>

namespace vastrelline {

// Brings saturated pixels down to the brightest unsaturated one, in place: no pixel stays above the largest
// pixel that lies strictly below `saturationValue`. A frame without a pixel below it becomes all 0.
void CapSaturation(uint16_t* pixels, int32_t width, int32_t height, int32_t saturationValue);

}  // namespace vastrelline
