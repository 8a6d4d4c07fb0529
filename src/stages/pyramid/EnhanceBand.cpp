// SPDX-License-Identifier: Apache-2.0
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

}  // namespace

BandMap::BandMap(std::span<const int32_t> responses, int32_t min)
    : below_(static_cast<size_t>(std::max(-min, 0))) {
    const auto above = static_cast<size_t>(std::max(min, 0));
    table_.resize(above + std::max(responses.size(), below_ + 1));
    auto entry = table_.begin() + static_cast<std::ptrdiff_t>(above);
    *entry++ = static_cast<int16_t>(LowBits16(min));
    for (const int32_t response : responses.subspan(1)) *entry++ = static_cast<int16_t>(LowBits16(response));
}

void BandMap::Apply(int16_t* values, size_t count) const {
    FastestOf(BandVariants()).run->remap(values, count, table_.data() + below_);
}

BandRange StartOfBandRange(int32_t maxValue) {
    // No value of a band passes the top pixel, so a start beyond it is the same as one at it.
    const int32_t start = std::clamp(maxValue, 0, kTopPixel);
    return {start, -start};
}

std::optional<BandMap> PlanBandMap(const int16_t* band, size_t count, BandRange range,
                                   const BandEnhancement& how,
                                   const std::function<void(const std::vector<int32_t>&)>& seeResponses) {
    const int32_t steps = range.max - range.min + 1;
    if (steps < kFewestSteps) return std::nullopt;
    const std::optional<int32_t> noiseLimit = FindNoiseLimit(
        FastestOf(BandVariants()).run->countValues(band, count, range), range.min, how.cutLimit);
    if (!noiseLimit) return std::nullopt;
    const BandLevels levels{*noiseLimit, TruncateToInt32(*noiseLimit * how.noiseWidth),
                            std::max(std::abs(range.min), std::abs(range.max))};
    const std::vector<int32_t> responses =
        BuildBandResponse(range.min, range.max, levels, how.ratio, how.curve, how.tailMode);
    if (responses.empty()) return std::nullopt;
    if (seeResponses) seeResponses(responses);
    return BandMap(responses, range.min);
}

int32_t EnhanceBand(int16_t* band, int32_t width, int32_t height, int32_t maxValue, double ratio,
                    double noiseWidth, BandCurve curve, double cutLimit, TailMode tailMode, int32_t bandIndex,
                    PyramidObserver* observer) {
    const auto show = [&](std::wstring_view nameFormat) {
        if (observer == nullptr) return;
        TellIfPossible([&] {
            observer->SeeFrame(FormatText(nameFormat, {bandIndex}), reinterpret_cast<const uint16_t*>(band),
                               width, height);
        });
    };
    show(L"Diff1_%d.raw");
    const size_t count = FrameView(band, width, height).Count();
    const BandRange range = FastestOf(BandVariants()).run->findRange(band, count, StartOfBandRange(maxValue));
    const std::optional<BandMap> map = PlanBandMap(
        band, count, range, {ratio, noiseWidth, curve, cutLimit, tailMode},
        [&](const std::vector<int32_t>& responses) {
            if (observer == nullptr) return;
            TellIfPossible([&] {
                observer->SeeResponse(FormatText(L"EnhancedSlope_%d.txt", {bandIndex}), range.min, responses);
            });
        });
    if (!map) return 0;
    map->Apply(band, count);
    show(L"Diff2_%d.raw");
    return 1;
}

}  // namespace vastrelline
