// SPDX-License-Identifier: Apache-2.0
#include "sensor/CornerOutline.h"

#include <algorithm>

#include "elementary/Exponential.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

constexpr float kStart = 0.01F;

}  // namespace

CornerOutline::CornerOutline(int32_t frameWidth, int32_t frameHeight, int32_t cutOff, int32_t cutOffRight)
    : frameWidth_(frameWidth),
      frameHeight_(frameHeight),
      cutOff_(cutOff),
      cutOffRight_(cutOffRight),
      // 1, or not a number for a size of 0, which has no chamfer.
      slope_(static_cast<float>(cutOff) / static_cast<float>(cutOff)),
      step_((1 - kStart) / static_cast<float>(cutOffRight)),
      first_(static_cast<float>(Exp(-static_cast<double>(kStart)))),
      scale_(static_cast<float>(cutOffRight) / (first_ - static_cast<float>(Exp(-1.0)))) {}

int32_t CornerOutline::HiddenRows(int32_t column) const {
    // The outline is that of the left half, its last column the middle one, and the right half mirrors it; in
    // a frame of even width the column right of the middle is both.
    const int32_t mirror = frameWidth_ - 1 - column;
    int32_t rows = 0;
    if (column <= frameWidth_ / 2) rows = HiddenRowsAtLeft(column);
    if (mirror < column) rows = std::max(rows, HiddenRowsAtLeft(mirror));
    return std::clamp(rows, 0, frameHeight_);
}

int32_t CornerOutline::HiddenRowsAtLeft(int32_t column) const {
    // Just below one half: halves are not rounded up.
    constexpr float kRounding = 0.49998998641967773F;
    int32_t height = -1;
    if (cutOff_ > 0) height = cutOff_ - TruncateToInt32(static_cast<float>(column) * slope_ + kRounding);
    if (column < cutOffRight_) {
        const float t = static_cast<float>(column) * step_ + kStart;
        const float u = first_ - static_cast<float>(Exp(-static_cast<double>(t)));
        height = std::max(height, cutOffRight_ - TruncateToInt32(u * scale_));
    }
    return height + 1;
}

}  // namespace vastrelline
