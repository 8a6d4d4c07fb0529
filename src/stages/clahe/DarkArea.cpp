#include "stages/clahe/DarkArea.h"

#include <algorithm>
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

// From this level of the mask on the earlier value counts alone.
constexpr int32_t kWholeMask = 127;

// The definitions.
bool MarkScalar(const uint16_t* pixels, size_t count, uint16_t threshold, uint16_t* mask) {
    bool hasDark = false;
    for (size_t i = 0; i < count; ++i) {
        const bool isDark = pixels[i] < threshold;
        mask[i] = isDark ? kMaskTop : 0;
        hasDark = hasDark || isDark;
    }
    return hasDark;
}

// Part of its callers: behind a call out of a vector form the compiler would leave the upper halves of vector
// registers in use, and all plain code after it would wait for them.
[[gnu::always_inline]] inline void MixOneByOne(uint16_t* pixels, const uint16_t* before, const uint16_t* mask,
                                               size_t count, int32_t maxValue) {
    for (size_t i = 0; i < count; ++i) {
        if (mask[i] == 0) continue;
        const double alpha = std::min(mask[i] / double{kWholeMask}, 1.0);
        const int32_t mixed = TruncateToInt32(before[i] * alpha + pixels[i] * (1.0 - alpha));
        pixels[i] = LowBits16(std::max(std::min(mixed, maxValue), 0));
    }
}

void MixScalar(uint16_t* pixels, const uint16_t* before, const uint16_t* mask, size_t count,
               int32_t maxValue) {
    MixOneByOne(pixels, before, mask, count, maxValue);
}

#if VASTRELLINE_VECTOR_FORMS

// These become part of each function below, so that the compiler makes vectors of that function's width.

[[gnu::always_inline]] inline bool MarkInLanes(const uint16_t* pixels, size_t count, uint16_t threshold,
                                               uint16_t* mask) {
    uint16_t found = 0;
    for (size_t i = 0; i < count; ++i) {
        const uint16_t level = pixels[i] < threshold ? kMaskTop : 0;
        mask[i] = level;
        found |= level;
    }
    return found != 0;
}

// Dark areas are large: most stretches lie outside or inside as a whole, and only their seams are mixed.
[[gnu::always_inline]] inline void MixInLanes(uint16_t* pixels, const uint16_t* before, const uint16_t* mask,
                                              size_t count, int32_t maxValue) {
    constexpr size_t kStep = 32;
    const int32_t top = std::clamp(maxValue, 0, kTopPixel);
    size_t start = 0;
    for (; start + kStep <= count; start += kStep) {
        // The signed numbers are as good for levels of a mask, and every x86-64 has vectors for their order.
        int16_t smallest = kMaskTop;
        int16_t largest = 0;
        for (size_t i = start; i < start + kStep; ++i) {
            const auto level = static_cast<int16_t>(mask[i]);
            smallest = level < smallest ? level : smallest;
            largest = level > largest ? level : largest;
        }
        if (largest == 0) continue;
        uint16_t mixed[kStep];
        if (smallest >= kWholeMask) {
            for (size_t i = 0; i < kStep; ++i)
                mixed[i] = std::min(before[start + i], static_cast<uint16_t>(top));
        } else {
            for (size_t i = 0; i < kStep; ++i) {
                const int32_t level = mask[start + i];
                const int32_t pixel = pixels[start + i];
                const double alpha = std::min(level, kWholeMask) / double{kWholeMask};
                // A mean of two pixels always fits, so that the plain conversion does.
                const auto mean = static_cast<int32_t>(before[start + i] * alpha + pixel * (1.0 - alpha));
                // All bits where the pixel stays. A choice would be a branch.
                const int32_t kept = -static_cast<int32_t>(level == 0);
                mixed[i] = static_cast<uint16_t>((pixel & kept) | (std::min(mean, top) & ~kept));
            }
        }
        std::copy_n(mixed, kStep, pixels + start);
    }
    MixOneByOne(pixels + start, before + start, mask + start, count - start, maxValue);
}

bool MarkBaseline(const uint16_t* pixels, size_t count, uint16_t threshold, uint16_t* mask) {
    return MarkInLanes(pixels, count, threshold, mask);
}
void MixBaseline(uint16_t* pixels, const uint16_t* before, const uint16_t* mask, size_t count,
                 int32_t maxValue) {
    MixInLanes(pixels, before, mask, count, maxValue);
}
TARGET_AVX2 bool MarkAvx2(const uint16_t* pixels, size_t count, uint16_t threshold, uint16_t* mask) {
    return MarkInLanes(pixels, count, threshold, mask);
}
TARGET_AVX2 void MixAvx2(uint16_t* pixels, const uint16_t* before, const uint16_t* mask, size_t count,
                         int32_t maxValue) {
    MixInLanes(pixels, before, mask, count, maxValue);
}

constexpr DarkAreaLoops kBaseline = {MarkBaseline, MixBaseline};
constexpr DarkAreaLoops kAvx2 = {MarkAvx2, MixAvx2};

#endif

constexpr DarkAreaLoops kScalar = {MarkScalar, MixScalar};

constexpr DarkAreaVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, &kScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, &kBaseline},
    {"avx2", InstructionSet::Avx2, &kAvx2},
#endif
};

}  // namespace

std::span<const DarkAreaVariant> DarkAreaVariants() { return AllowedVariants(kVariants); }

void CorrectDarkArea(uint16_t* pixels, const uint16_t* before, int32_t width, int32_t height,
                     int32_t maxValue) {
    constexpr double kMaskSigma = 3.0;
    const auto threshold = static_cast<uint16_t>(DarkThreshold({pixels, width, height}, maxValue));
    ScratchVector<uint16_t> mask = AllocFrame<uint16_t>(width, height);
    const DarkAreaLoops& loops = *FastestOf(DarkAreaVariants()).run;
    // A mask of zeros stays one.
    if (!loops.mark(pixels, mask.size(), threshold, mask.data())) return;
    GaussFilterWrap(mask.data(), width, height, kMaskTop, kMaskSigma);
    loops.mix(pixels, before, mask.data(), mask.size(), maxValue);
}

}  // namespace vastrelline
