// SPDX-License-Identifier: Apache-2.0
#include "stages/linear/WindowCurve.h"

#include <cstddef>

#include "operators/curves/LinearCurve.h"
#include "operators/histogram/PixelRange.h"
#include "pixels/Truncate.h"

namespace vastrelline {

int32_t WindowCurve::ValueAt(int32_t level) const {
    const double rampWidth = WrappingSubtract(highEdge, lowEdge);
    return RampValue(outputRange, level <= highEdge ? WrappingSubtract(level, lowEdge) / rampWidth : 1.0);
}

WindowCurve BuildWindowCurve(const uint16_t* pixels, int32_t width, int32_t height, int32_t windowWidth,
                             int32_t centre, int32_t outputRange) {
    WindowCurve curve = MakeWindowCurve(windowWidth, centre, outputRange);
    const size_t levels = static_cast<size_t>(MaxPixel(pixels, width, height)) + 1;
    curve.table.resize(levels);
    for (size_t level = 0; level < levels; ++level)
        curve.table[level] = LowBits16(curve.ValueAt(static_cast<int32_t>(level)));
    return curve;
}

WindowCurve MakeWindowCurve(int32_t windowWidth, int32_t centre, int32_t outputRange) {
    const int32_t halfWidth = TruncateToInt32(windowWidth / 2.0 + 0.5);
    return {WrappingAdd(centre, halfWidth), {}, WrappingSubtract(centre, halfWidth), outputRange};
}

}  // namespace vastrelline
