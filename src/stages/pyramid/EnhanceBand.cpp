#include "stages/pyramid/EnhanceBand.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "operators/histogram/Histogram.h"
#include "pixels/FrameLimits.h"
#include "pixels/FrameView.h"
#include "pixels/Truncate.h"
#include "platform/TextFormat.h"
#include "report/TellIfPossible.h"
#include "stages/pyramid/BandKernels.h"

namespace vastrelline {

namespace {

// A band of fewer steps has no histogram worth a curve.
constexpr int32_t kFewestSteps = 20;
constexpr int32_t kSmoothingWindow = 10;

// The magnitude that the histogram's bins above the cut reach on either side; none if no bin is above it.
std::optional<int32_t> FindNoiseLimit(std::span<const uint32_t> histogram, int32_t min, double cutLimit) {
    const size_t bins = histogram.size();
    std::vector<uint32_t> smoothed(bins);
    SmoothHistogram(histogram.data(), smoothed.data(), static_cast<int32_t>(bins), kSmoothingWindow);
    const uint32_t peak = *std::max_element(smoothed.begin(), smoothed.end());
    // Below 0 for a cut limit below 0 or that is not a number: then every bin is above it.
    const int64_t threshold = TruncateToInt32(peak * cutLimit);
    const auto isAbove = [&](size_t bin) { return smoothed[bin] > threshold; };
    size_t lo = 0;
    while (lo < bins && !isAbove(lo)) ++lo;
    if (lo == bins) return std::nullopt;
    size_t hi = bins - 1;
    while (hi > lo && !isAbove(hi)) --hi;
    return std::max(std::abs(static_cast<int32_t>(lo) + min), std::abs(static_cast<int32_t>(hi) + min));
}

// Replaces each value of a band by its response in 16 bits, but for the smallest value, which stays.
void Remap(const BandKernels& kernels, int16_t* band, size_t count, std::span<const int32_t> responses,
           int32_t min) {
    // The table also covers 0 where the band does not, so that 0 can be its origin.
    const size_t below = static_cast<size_t>(std::max(-min, 0));
    std::vector<int16_t> table(static_cast<size_t>(std::max(min, 0)) + std::max(responses.size(), below + 1));
    auto entry = table.begin() + std::max(min, 0);
    *entry++ = static_cast<int16_t>(LowBits16(min));
    for (const int32_t response : responses.subspan(1)) *entry++ = static_cast<int16_t>(LowBits16(response));
    kernels.remap(band, count, table.data() + below);
}

}  // namespace

int32_t EnhanceBand(int16_t* band, int32_t width, int32_t height, int32_t maxValue, double ratio,
                    double noiseWidth, BandCurve curve, double cutLimit, TailMode tailMode, int32_t bandIndex,
                    PyramidObserver* observer) {
    const auto showBand = [&](std::wstring_view nameFormat) {
        if (observer == nullptr) return;
        TellIfPossible([&] {
            observer->SeeFrame(FormatText(nameFormat, {bandIndex}), reinterpret_cast<const uint16_t*>(band),
                               width, height);
        });
    };
    showBand(L"Diff1_%d.raw");
    const BandKernels& kernels = *FastestOf(BandVariants()).run;
    const size_t count = FrameView(band, width, height).Count();
    // No value of a band passes the top pixel, so a start beyond it is the same as one at it.
    const int32_t start = std::clamp(maxValue, 0, kTopPixel);
    const BandRange range = kernels.findRange(band, count, {start, -start});
    const int32_t steps = range.max - range.min + 1;
    if (steps < kFewestSteps) return 0;

    const std::optional<int32_t> noiseLimit =
        FindNoiseLimit(kernels.countValues(band, count, range), range.min, cutLimit);
    if (!noiseLimit) return 0;
    const BandLevels levels{*noiseLimit, TruncateToInt32(*noiseLimit * noiseWidth),
                            std::max(std::abs(range.min), std::abs(range.max))};
    const std::vector<int32_t> responses =
        BuildBandResponse(range.min, range.max, levels, ratio, curve, tailMode);
    if (responses.empty()) return 0;
    if (observer != nullptr) {
        TellIfPossible([&] {
            observer->SeeResponse(FormatText(L"EnhancedSlope_%d.txt", {bandIndex}), range.min, responses);
        });
    }
    Remap(kernels, band, count, responses, range.min);
    showBand(L"Diff2_%d.raw");
    return 1;
}

}  // namespace vastrelline
