#include "stages/inversion/LogCurve.h"

#include <algorithm>
#include <cmath>

#include "operators/histogram/PixelRange.h"
#include "pixels/FrameView.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

double LogAboveZero(int32_t value) { return value > 0 ? std::log(static_cast<double>(value)) : 0.0; }

}  // namespace

LogCurve BuildLogCurve(const uint16_t* pixels, int32_t width, int32_t height, double ratio, int32_t inverse) {
    const auto [minLevel, maxLevel] = FindPixelRange(pixels, width, height);
    const int32_t span = maxLevel - minLevel + 1;
    LogCurve curve{minLevel, std::vector<uint16_t>(static_cast<size_t>(std::max(span, 0)))};
    const double sign = inverse != 0 ? -1.0 : 1.0;
    const int32_t offset = inverse != 0 ? span : 0;
    const int32_t start = TruncateToInt32(span * ratio);
    const int32_t k = start < 0 ? WrappingSubtract(0, start) : start;
    const double logK = LogAboveZero(k);
    const double denominator = std::log(static_cast<double>(WrappingAdd(span, k))) - logK;
    for (int32_t i = 0; i < span; ++i) {
        const double rise = span * (LogAboveZero(WrappingAdd(i, k)) - logK);
        // One level at ratio 0 has 0 / 0 here, which counts as 0.
        const double v = rise == 0 && denominator == 0 ? 0.0 : rise / denominator;
        const uint16_t entry = LowBits16(TruncateToInt32(sign * v + offset));
        curve.table[static_cast<size_t>(i)] = LowBits16(WrappingAdd(entry, minLevel));
    }
    return curve;
}

void ApplyLogTable(uint16_t* pixels, int32_t width, int32_t height, const LogCurve& curve) {
    if (curve.table.empty()) return;
    const int32_t last = static_cast<int32_t>(curve.table.size()) - 1;
    for (uint16_t& pixel : FrameView(pixels, width, height)) {
        pixel = curve.table[static_cast<size_t>(std::clamp(pixel - curve.minLevel, 0, last))];
    }
}

}  // namespace vastrelline
