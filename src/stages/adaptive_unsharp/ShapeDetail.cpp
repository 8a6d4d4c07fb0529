// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/ShapeDetail.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "operators/curves/StretchCurve.h"
#include "operators/histogram/Histogram.h"
#include "operators/histogram/PixelRange.h"
#include "operators/separable/SeparableFilter.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
#include "pixels/Truncate.h"
#include "stages/adaptive_unsharp/DetailLoops.h"

namespace vastrelline {

namespace {

int16_t LowBitsSigned(int32_t value) { return static_cast<int16_t>(LowBits16(value)); }

// What each detail value from lo to hi puts on the smoothed frame.
std::vector<double> BuildEnhancedDetail(const ScratchVector<uint16_t>& detail, int32_t width, int32_t height,
                                        double ratio, int32_t noise) {
    constexpr double kTailWeight = 8.0;
    const auto [lo, hi] = FindPixelRange(detail.data(), width, height);
    // Bins above the brightest detail would be empty.
    const std::vector<uint32_t> histogram = BuildHistogram(detail.data(), width, height, hi);
    const auto [left, right] = FindDetailSegments(histogram, lo, hi, noise);
    const int32_t rightLength = hi - right;
    const int32_t middleLength = hi - left - rightLength;
    const int32_t leftLength = left - lo;
    const auto curve = MakeStretchCurve(
        lo, hi, kTopDetail, {left, right, kTailWeight, kTailWeight, leftLength, middleLength, rightLength});
    std::vector<double> enhanced(static_cast<size_t>(hi) + 1);
    for (int32_t level = lo; level <= hi; ++level) {
        const int32_t shaped = WrappingAdd(curve(level), lo - kZeroDetail);
        enhanced[static_cast<size_t>(level)] = LowBitsSigned(shaped) * ratio;
    }
    return enhanced;
}

// A bin's count; bins outside the histogram are empty.
int64_t CountAt(std::span<const uint32_t> histogram, int32_t bin) {
    if (bin < 0 || static_cast<size_t>(bin) >= histogram.size()) return 0;
    return histogram[static_cast<size_t>(bin)];
}

int64_t SumTenBins(std::span<const uint32_t> histogram, int32_t first) {
    int64_t sum = 0;
    for (int32_t bin = first; bin < first + 10; ++bin) sum += CountAt(histogram, bin);
    return sum;
}

}  // namespace

DetailSegments FindDetailSegments(std::span<const uint32_t> histogram, int32_t lo, int32_t hi,
                                  int32_t noise) {
    const auto at = [&](int32_t bin) { return CountAt(histogram, bin); };
    int32_t peak = lo;
    for (int32_t bin = lo; bin < hi; ++bin) {
        if (at(bin) > at(peak)) peak = bin;
    }
    // Bins peak - 15 to peak - 6 and peak + 5 to peak + 14: those beside the peak belong to it.
    const int64_t sum = SumTenBins(histogram, peak - 15) + SumTenBins(histogram, peak + 5);
    const int32_t limit = TruncateToInt32((static_cast<double>(sum) / 20.0) * (noise / 100.0));
    const auto divides = [&](int32_t bin) { return at(bin) > 0 && at(bin) < limit; };
    DetailSegments segments{0, 0};
    int32_t bin = peak;
    while (bin > lo && !divides(bin)) --bin;
    if (bin > lo) segments.left = bin;
    bin = peak;
    while (bin < hi && !divides(bin)) ++bin;
    if (bin < hi) segments.right = bin;
    return segments;
}

void ShapeDetail(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, double sigma,
                 double ratio, int32_t noise, uint16_t* mask) {
    constexpr int32_t kTopOfMask = 255;
    constexpr double kSigmaOfMask = 6.0;
    const FrameView<uint16_t> frame(pixels, width, height);
    if (frame.Count() == 0) return;
    ScratchVector<uint16_t> smooth(frame.begin(), frame.end());
    GaussFilterReplicate(smooth.data(), width, height, maxValue, sigma);
    ScratchVector<uint16_t> detail(frame.Count());
    const DetailLoops& loops = *FastestOf(DetailVariants()).run;
    loops.scaleDetail(pixels, smooth.data(), frame.Count(), detail.data());
    const std::vector<double> enhanced = BuildEnhancedDetail(detail, width, height, ratio, noise);
    if (mask != nullptr) GaussFilterWrap(mask, width, height, kTopOfMask, kSigmaOfMask);
    loops.addShaped({pixels, smooth.data(), detail.data(), mask, frame.Count(), maxValue, enhanced});
}

}  // namespace vastrelline
