#include "stages/clahe/DarkArea.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "operators/histogram/Histogram.h"
#include "operators/histogram/SmoothedCopy.h"
#include "operators/separable/SeparableFilter.h"
#include "pixels/AllocFrame.h"
#include "pixels/FrameLimits.h"
#include "pixels/FrameView.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

// No area above this level is dark.
constexpr int32_t kBrightestDarkLevel = 1500;

constexpr int32_t kMaskTop = 255;

int32_t DarkThreshold(const FrameView<const uint16_t>& frame, int32_t maxValue) {
    constexpr int32_t kValleyCount = 50;  // a smoothed bin below this is a valley
    constexpr int32_t kWindow = 10;
    const int32_t top = std::min(maxValue, kTopPixel);
    if (top < 1) return kBrightestDarkLevel;
    const std::vector<uint32_t> histogram = BuildHistogram(frame.begin(), frame.Width(), frame.Height(), top);
    const std::vector<int32_t> smoothed = SmoothedCopy(histogram, top + 1, kWindow);
    for (int32_t level = std::min(kBrightestDarkLevel, top); level >= 1; --level) {
        if (smoothed[static_cast<size_t>(level)] < kValleyCount) return level;
    }
    return kBrightestDarkLevel;
}

}  // namespace

void CorrectDarkArea(uint16_t* pixels, const uint16_t* before, int32_t width, int32_t height,
                     int32_t maxValue) {
    constexpr double kMaskSigma = 3.0;
    constexpr double kWholeMask = 127.0;  // from here on the earlier value counts alone
    const FrameView<uint16_t> frame(pixels, width, height);
    const int32_t threshold = DarkThreshold({pixels, width, height}, maxValue);
    ScratchVector<uint16_t> mask = AllocFrame<uint16_t>(width, height);
    bool hasDark = false;
    for (size_t i = 0; i < mask.size(); ++i) {
        const bool isDark = frame.begin()[i] < threshold;
        mask[i] = isDark ? kMaskTop : 0;
        hasDark = hasDark || isDark;
    }
    // A mask of zeros stays one.
    if (!hasDark) return;
    GaussFilterWrap(mask.data(), width, height, kMaskTop, kMaskSigma);
    std::array<double, kMaskTop + 1> alphas{};
    for (size_t level = 0; level < alphas.size(); ++level)
        alphas[level] = std::min(static_cast<double>(level) / kWholeMask, 1.0);
    for (size_t i = 0; i < mask.size(); ++i) {
        if (mask[i] == 0) continue;
        const double alpha = alphas[mask[i]];
        uint16_t& pixel = frame.begin()[i];
        const int32_t mixed = TruncateToInt32(before[i] * alpha + pixel * (1.0 - alpha));
        pixel = LowBits16(std::max(std::min(mixed, maxValue), 0));
    }
}

}  // namespace vastrelline
