// SPDX-License-Identifier: Apache-2.0
#include "stages/clahe/DarkArea.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "operators/histogram/Histogram.h"
#include "operators/histogram/SmoothedCopy.h"
#include "operators/separable/FilterSchedule.h"
#include "operators/separable/GaussPlan.h"
#include "operators/separable/SeparableFilter.h"
#include "pixels/AllocFrame.h"
#include "pixels/FrameLimits.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
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

// A mask of dark areas, smoothed by a Gaussian that wraps around. The areas are large: where a window of the
// Gaussian sees one level, so does its neighbour as a rule, and the result there is known. So the mask is
// made in blocks, and only those are filtered whose windows see both levels, with as much around as these
// reach.
class DarkMask {
public:
    DarkMask(const FrameView<const uint16_t>& frame, uint16_t threshold, const DarkAreaLoops& loops,
             const GaussPlan& plan)
        : frame_(frame),
          threshold_(threshold),
          loops_(loops),
          kernel_(plan.kernel),
          half_(static_cast<int32_t>(kernel_.size()) / 2),
          reach_(static_cast<int32_t>(kernel_.size()) - 1),
          stride_(static_cast<size_t>(frame.Width() + reach_)),
          band_(stride_ * static_cast<size_t>(std::min(kBlock, frame.Height()) + reach_)),
          piece_(static_cast<size_t>(std::min(kMostColumns, frame.Width()) + reach_) *
                 static_cast<size_t>(std::min(kBlock, frame.Height()) + reach_)),
          darkLevel_(FilterDarkWindow()) {}

    // Makes the mask. Returns whether any pixel is dark; without one the mask is 0.
    bool Make(uint16_t* mask) {
        bool hasDark = false;
        for (int32_t y = 0; y < frame_.Height(); y += kBlock) {
            const int32_t rows = std::min(kBlock, frame_.Height() - y);
            uint16_t* const out = mask + static_cast<size_t>(y) * static_cast<size_t>(frame_.Width());
            if (MarkBand(y, rows)) {
                hasDark = true;
                SmoothBand(rows, out);
            } else {
                std::fill_n(out, static_cast<size_t>(rows) * static_cast<size_t>(frame_.Width()),
                            uint16_t{0});
            }
        }
        return hasDark;
    }

private:
    static constexpr int32_t kBlock = 64;
    // So many are filtered together at most, that the memory for it is small whatever a frame's shape.
    static constexpr int32_t kMostColumns = 32 * kBlock;

    uint16_t* BandRow(int32_t row) { return band_.data() + static_cast<size_t>(row) * stride_; }

    // Marks the rows from y on that `rows` rows of the result see, with the columns that they see beyond.
    bool MarkBand(int32_t y, int32_t rows) {
        const int32_t width = frame_.Width();
        bool hasDark = false;
        for (int32_t r = 0; r < rows + reach_; ++r) {
            const uint16_t* const source =
                frame_.Row(EdgeIndex(y + r - half_, frame_.Height(), EdgeRule::Wrap));
            uint16_t* const row = BandRow(r);
            if (loops_.mark(source, static_cast<size_t>(width), threshold_, row + half_)) hasDark = true;
            for (int32_t x = 0; x < half_; ++x)
                row[x] = row[half_ + EdgeIndex(x - half_, width, EdgeRule::Wrap)];
            for (int32_t x = half_ + width; x < width + reach_; ++x)
                row[x] = row[half_ + EdgeIndex(x - half_, width, EdgeRule::Wrap)];
        }
        return hasDark;
    }

    void SmoothBand(int32_t rows, uint16_t* out) {
        const int32_t width = frame_.Width();
        int32_t mixedFrom = 0;  // the blocks from here on wait to be filtered together
        for (int32_t x = 0; x < width; x += kBlock) {
            const int32_t columns = std::min(kBlock, width - x);
            if (x - mixedFrom == kMostColumns) {
                FilterPiece(mixedFrom, x, rows, out);
                mixedFrom = x;
            }
            if (!IsFlat(x, columns + reach_, rows + reach_)) continue;
            FilterPiece(mixedFrom, x, rows, out);
            mixedFrom = x + columns;
            const uint16_t level = BandRow(0)[x] == 0 ? uint16_t{0} : darkLevel_;
            for (int32_t y = 0; y < rows; ++y) std::fill_n(OutRow(out, y) + x, columns, level);
        }
        FilterPiece(mixedFrom, width, rows, out);
    }

    bool IsFlat(int32_t x, int32_t columns, int32_t rows) {
        const uint16_t level = BandRow(0)[x];
        for (int32_t y = 0; y < rows; ++y) {
            const uint16_t* const row = BandRow(y) + x;
            uint16_t others = 0;
            for (int32_t i = 0; i < columns; ++i) others |= row[i] ^ level;
            if (others != 0) return false;
        }
        return true;
    }

    // Filters the columns from `first` to before `end`. What lies beyond the edges of the piece only shows in
    // what is not taken of it.
    void FilterPiece(int32_t first, int32_t end, int32_t rows, uint16_t* out) {
        if (first == end) return;
        const int32_t width = end - first + reach_;
        const auto stride = static_cast<size_t>(width);
        for (int32_t y = 0; y < rows + reach_; ++y)
            std::copy_n(BandRow(y) + first, width, piece_.data() + static_cast<size_t>(y) * stride);
        FilterFrame({piece_.data(), width, rows + reach_, kMaskTop, kernel_, EdgeRule::Replicate});
        for (int32_t y = 0; y < rows; ++y) {
            const uint16_t* const row = piece_.data() + static_cast<size_t>(y + half_) * stride;
            std::copy_n(row + half_, end - first, OutRow(out, y) + first);
        }
    }

    // What the Gaussian makes of a window that is all dark.
    uint16_t FilterDarkWindow() const {
        const size_t size = kernel_.size();
        std::vector<uint16_t> window(size * size, kMaskTop);
        FilterFrame({window.data(), reach_ + 1, reach_ + 1, kMaskTop, kernel_, EdgeRule::Replicate});
        return window[static_cast<size_t>(half_) * size + static_cast<size_t>(half_)];
    }

    uint16_t* OutRow(uint16_t* out, int32_t y) const {
        return out + static_cast<size_t>(y) * static_cast<size_t>(frame_.Width());
    }

    FrameView<const uint16_t> frame_;
    uint16_t threshold_;
    const DarkAreaLoops& loops_;
    std::span<const double> kernel_;
    int32_t half_;                  // rows and columns that a window reaches before its centre
    int32_t reach_;                 // and in all beside it
    size_t stride_;                 // of the band
    ScratchVector<uint16_t> band_;  // marked rows, with what is seen around them
    ScratchVector<uint16_t> piece_;
    uint16_t darkLevel_;
};

}  // namespace

std::span<const DarkAreaVariant> DarkAreaVariants() { return AllowedVariants(kVariants); }

void CorrectDarkArea(uint16_t* pixels, const uint16_t* before, int32_t width, int32_t height,
                     int32_t maxValue) {
    constexpr double kMaskSigma = 3.0;
    const FrameView<const uint16_t> frame(pixels, width, height);
    const auto threshold = static_cast<uint16_t>(DarkThreshold(frame, maxValue));
    const DarkAreaLoops& loops = *FastestOf(DarkAreaVariants()).run;
    ScratchVector<uint16_t> mask = AllocFrame<uint16_t>(width, height);
    const std::optional<GaussPlan> plan = PlanGaussWrap(width, height, kMaskSigma);
    // A frame too large for the Gaussian has a mask without soft borders.
    const bool hasDark = plan ? DarkMask(frame, threshold, loops, *plan).Make(mask.data())
                              : loops.mark(pixels, mask.size(), threshold, mask.data());
    if (hasDark) loops.mix(pixels, before, mask.data(), mask.size(), maxValue);
}

}  // namespace vastrelline
