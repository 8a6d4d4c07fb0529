// SPDX-License-Identifier: Apache-2.0
#include "stages/inversion/LogCurve.h"

#include <algorithm>

#include "elementary/Logarithm.h"
#include "operators/histogram/PixelRange.h"
#include "pixels/FrameView.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

double LogAboveZero(int32_t value) { return value > 0 ? Log(static_cast<double>(value)) : 0.0; }

int32_t Magnitude(int32_t value) { return value < 0 ? WrappingSubtract(0, value) : value; }

}  // namespace

LogShape::LogShape(int32_t minLevel, int32_t maxLevel, double ratio, int32_t inverse)
    : minLevel_(minLevel),
      span_(maxLevel - minLevel + 1),
      sign_(inverse != 0 ? -1.0 : 1.0),
      offset_(inverse != 0 ? span_ : 0),
      k_(Magnitude(TruncateToInt32(span_ * ratio))),
      logK_(LogAboveZero(k_)),
      denominator_(Log(static_cast<double>(WrappingAdd(span_, k_))) - logK_) {}

uint16_t LogShape::EntryAt(int32_t level) const {
    const double rise = span_ * (LogAboveZero(WrappingAdd(level - minLevel_, k_)) - logK_);
    // One level at ratio 0 has 0 / 0 here, which counts as 0.
    const double v = rise == 0 && denominator_ == 0 ? 0.0 : rise / denominator_;
    const uint16_t entry = LowBits16(TruncateToInt32(sign_ * v + offset_));
    return LowBits16(WrappingAdd(entry, minLevel_));
}

LogCurve LogShape::Table() const {
    LogCurve curve{minLevel_, std::vector<uint16_t>(static_cast<size_t>(std::max(span_, 0)))};
    for (int32_t i = 0; i < span_; ++i) curve.table[static_cast<size_t>(i)] = EntryAt(minLevel_ + i);
    return curve;
}

LogCurve BuildLogCurve(const uint16_t* pixels, int32_t width, int32_t height, double ratio, int32_t inverse) {
    const auto [minLevel, maxLevel] = FindPixelRange(pixels, width, height);
    return LogShape(minLevel, maxLevel, ratio, inverse).Table();
}

void ApplyLogTable(uint16_t* pixels, int32_t width, int32_t height, const LogCurve& curve) {
    if (curve.table.empty()) return;
    const int32_t last = static_cast<int32_t>(curve.table.size()) - 1;
    for (uint16_t& pixel : FrameView(pixels, width, height)) {
        pixel = curve.table[static_cast<size_t>(std::clamp(pixel - curve.minLevel, 0, last))];
    }
}

}  // namespace vastrelline
