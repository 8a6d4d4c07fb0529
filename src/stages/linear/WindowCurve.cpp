#include "stages/linear/WindowCurve.h"

#include <cstddef>

#include "operators/curves/LinearCurve.h"
#include "operators/histogram/PixelRange.h"
#include "pixels/Truncate.h"

namespace vastrelline {

WindowCurve BuildWindowCurve(const uint16_t* pixels, int32_t width, int32_t height, int32_t windowWidth,
                             int32_t centre, int32_t outputRange) {
    const int32_t halfWidth = TruncateToInt32(windowWidth / 2.0 + 0.5);
    const int32_t lowEdge = WrappingSubtract(centre, halfWidth);
    const int32_t highEdge = WrappingAdd(centre, halfWidth);
    const double rampWidth = WrappingSubtract(highEdge, lowEdge);
    const int32_t maxPixel = MaxPixel(pixels, width, height);
    WindowCurve curve{highEdge, std::vector<uint16_t>(static_cast<size_t>(maxPixel) + 1)};
    for (int32_t level = 0; level <= maxPixel; ++level) {
        const double place = level <= highEdge ? WrappingSubtract(level, lowEdge) / rampWidth : 1.0;
        curve.table[static_cast<size_t>(level)] = RampEntry(outputRange, place);
    }
    return curve;
}

}  // namespace vastrelline
