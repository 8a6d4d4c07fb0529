// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "operators/curves/StretchCurve.h"
#include "operators/histogram/Histogram.h"
#include "operators/histogram/PixelRange.h"
#include "operators/separable/SeparableFilter.h"
#include "stages/adaptive_unsharp/HistogramShapedUnsharp.h"
#include "stages/adaptive_unsharp/ShapeDetail.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kHostile = std::numeric_limits<int32_t>::max();

// A peak of 1000 at bin 30; 20 in each of the twenty bins that make the mean, 15 to 24 and 35 to 44; few in
// bins 12 and 46, and in the ends 10 and 50.
std::vector<uint32_t> MakeHistogram() {
    std::vector<uint32_t> histogram(64);
    std::fill(histogram.begin() + 15, histogram.begin() + 25, 20);
    std::fill(histogram.begin() + 35, histogram.begin() + 45, 20);
    histogram[30] = 1000;
    histogram[12] = 5;
    histogram[46] = 7;
    histogram[10] = histogram[50] = 1;
    return histogram;
}

struct SegmentsCase {
    const char* name;
    int32_t noise;
    std::vector<std::pair<size_t, uint32_t>> changes;  // bins that differ from MakeHistogram
    int32_t left;
    int32_t right;
};

class DetailSegmentsTest : public testing::TestWithParam<SegmentsCase> {};

TEST_P(DetailSegmentsTest, FindsTheBins) {
    std::vector<uint32_t> histogram = MakeHistogram();
    for (const auto& [bin, count] : GetParam().changes) histogram.at(bin) = count;
    const DetailSegments segments = FindDetailSegments(histogram, 10, 50, GetParam().noise);
    EXPECT_EQ(segments.left, GetParam().left);
    EXPECT_EQ(segments.right, GetParam().right);
}

INSTANTIATE_TEST_SUITE_P(
    Histograms, DetailSegmentsTest,
    testing::Values(
        // limit 20: the bins of 20 do not divide
        SegmentsCase{"BelowTheMean", 100, {}, 12, 46},  //
        // limit 20 * 0.35 = 7, which is not below 7
        SegmentsCase{"StrictlyBelowTheLimit", 35, {}, 12, 0},
        // limit 5: only the ends are below, and they are not tested
        SegmentsCase{"EndsAreNotTested", 25, {}, 0, 0},  //
        SegmentsCase{"NoNoiseDividesNowhere", 0, {}, 0, 0},
        SegmentsCase{"NoiseBelowZeroDividesNowhere", std::numeric_limits<int32_t>::min(), {}, 0, 0},
        SegmentsCase{"LargeNoiseDividesAtThePeak", 100000, {}, 30, 30},  // limit 20000
        SegmentsCase{"LargestNoise", kHostile, {}, 30, 30},
        // 399 / 20 is 19.95, and the limit 19
        SegmentsCase{"LimitIsTruncated", 100, {{20, 19}}, 12, 46},
        SegmentsCase{"BinsBesideThePeakDoNotCount", 100, {{25, 20}, {34, 19}}, 12, 34},
        SegmentsCase{"FirstOfTheLargestBinsIsThePeak", 100, {{47, 1000}}, 12, 46},
        // The last bin is larger than the peak, but it is not looked at.
        SegmentsCase{"TopIsNoPeak", 100, {{50, 5000}}, 12, 46}),
    [](const auto& test) { return test.param.name; });

TEST(DetailSegments, BinsOutsideTheTableAreEmpty) {
    // The peak is bin 1; of the mean's bins only 6 and 7 exist: (30 + 10) / 20 * 10 = 20.
    const std::vector<uint32_t> histogram{3, 500, 90, 90, 90, 90, 30, 10};
    const DetailSegments segments = FindDetailSegments(histogram, 0, 8, 1000);
    EXPECT_EQ(segments.left, 0);
    EXPECT_EQ(segments.right, 7);
    EXPECT_EQ(FindDetailSegments(histogram, 1, 1, 1000).left, 0);
    EXPECT_EQ(FindDetailSegments(histogram, 1, 1, 1000).right, 0);
    EXPECT_EQ(FindDetailSegments({}, 65536, 0, 1000).right, 0);
}

// The same step by step, with a frame for each quantity.
Frame ShapeStepByStep(Frame p, int32_t maxValue, double sigma, double ratio, int32_t noise, Frame* mask) {
    const int32_t w = p.width;
    const int32_t h = p.height;
    Frame l = p;
    GaussFilterReplicate(l.Data(), w, h, maxValue, sigma);
    std::vector<int16_t> d(p.pixels.size());
    Frame u(w, h);
    for (size_t i = 0; i < d.size(); ++i) {
        d[i] = static_cast<int16_t>(p.pixels[i] - l.pixels[i]);
        u.pixels[i] = static_cast<uint16_t>(std::max(0, std::min(65533, d[i] + 32767)));
    }
    const int32_t lo = MinPixel(u.Data(), w, h);
    const int32_t hi = MaxPixel(u.Data(), w, h);
    const auto [left, right] = FindDetailSegments(BuildHistogram(u.Data(), w, h, 65533), lo, hi, noise);
    const std::vector<int32_t> curve = BuildStretchCurve(u.Data(), w, h, 65533, left, right, 8.0, 8.0,
                                                         left - lo, hi - left - (hi - right), hi - right);
    if (mask != nullptr) GaussFilterWrap(mask->Data(), w, h, 255, 6.0);
    for (size_t i = 0; i < d.size(); ++i) {
        d[i] = static_cast<int16_t>(curve[u.pixels[i]] + lo - 32767);
        double value = l.pixels[i] + d[i] * ratio;
        if (mask != nullptr) {
            const double weight = mask->pixels[i] / 255.0;
            value = p.pixels[i] * weight + value * (1.0 - weight);
        }
        p.pixels[i] = static_cast<uint16_t>(std::max(0.0, std::min<double>(maxValue, std::trunc(value))));
    }
    return p;
}

Frame Shape(Frame frame, double sigma, double ratio, int32_t noise, Frame* mask = nullptr,
            int32_t maxValue = 4095) {
    ShapeDetail(frame.Data(), frame.width, frame.height, maxValue, sigma, ratio, noise,
                mask == nullptr ? nullptr : mask->Data());
    return frame;
}

// A soft frame with a little noise: its detail has a peak and tails.
Frame MakeSoftFrame(int32_t width, int32_t height) {
    Frame frame = Ramp(width, height, 500, 9, 4);
    const Frame noise = Noise(width, height, 30, 20240514);
    for (size_t i = 0; i < frame.pixels.size(); ++i)
        frame.pixels[i] = static_cast<uint16_t>(frame.pixels[i] + noise.pixels[i]);
    frame.At(width / 2, height / 2) = 3000;
    frame.At(width / 3, height / 3) = 100;
    return frame;
}

TEST(ShapeDetail, EqualsItsStepsOneByOne) {
    const Frame frame = MakeSoftFrame(61, 47);
    for (const int32_t noise : {0, 20, 100, 400, 100000}) {
        for (const double ratio : {1.0, 2.5, -1.0}) {
            EXPECT_THAT(Shape(frame, 2.0, ratio, noise),
                        EqualsFrame(ShapeStepByStep(frame, 4095, 2.0, ratio, noise, nullptr)))
                << noise << ", " << ratio;
        }
    }
    EXPECT_NE(Shape(frame, 2.0, 2.5, 100), frame);
}

TEST(ShapeDetail, WithoutARatioTheSmoothedFrameIsLeft) {
    const Frame frame = MakeSoftFrame(40, 30);
    Frame smooth = frame;
    GaussFilterReplicate(smooth.Data(), 40, 30, 4095, 2.0);
    EXPECT_THAT(Shape(frame, 2.0, 0.0, 100), EqualsFrame(smooth));
}

TEST(ShapeDetail, MaskMixesWithASoftBorder) {
    const Frame frame = MakeSoftFrame(100, 40);
    Frame mask(100, 40);
    for (int32_t y = 0; y < 40; ++y)
        for (int32_t x = 0; x < 60; ++x) mask.At(x, y) = 255;
    Frame smoothMask = mask;
    const Frame expected = ShapeStepByStep(frame, 4095, 2.0, 3.0, 100, &smoothMask);
    Frame usedMask = mask;
    const Frame result = Shape(frame, 2.0, 3.0, 100, &usedMask);
    EXPECT_THAT(result, EqualsFrame(expected));
    EXPECT_THAT(usedMask, EqualsFrame(smoothMask));
    const Frame unmasked = Shape(frame, 2.0, 3.0, 100);
    // More than fifteen pixels from the mask's edges; the one at the left lies around the frame's end, too.
    for (int32_t y = 0; y < 40; ++y) {
        for (int32_t x = 17; x < 43; ++x) ASSERT_NEAR(result.At(x, y), frame.At(x, y), 8) << x << ' ' << y;
        ASSERT_EQ(result.At(80, y), unmasked.At(80, y)) << y;
    }
}

TEST(ShapeDetail, EmptyMaskIsNoMask) {
    const Frame frame = MakeSoftFrame(30, 20);
    Frame mask(30, 20);
    EXPECT_THAT(Shape(frame, 1.5, 3.0, 100, &mask), EqualsFrame(Shape(frame, 1.5, 3.0, 100)));
}

Frame Sharpen(Frame frame, double sigma, double ratio, int32_t noise, int32_t maxValue = 4095) {
    HistogramShapedUnsharp(frame.Data(), frame.width, frame.height, maxValue, sigma, ratio, noise, nullptr);
    return frame;
}

// What the narrow Gaussian takes comes back as it was.
TEST(HistogramShapedUnsharp, FinestDetailIsPutBackWithoutGain) {
    const Frame frame = MakeSoftFrame(50, 35);
    Frame base = frame;
    GaussFilterReplicate(base.Data(), 50, 35, 4095, 1.0);
    const Frame shaped = Shape(base, 3.0, 2.0, 100);
    const Frame result = Sharpen(frame, 3.0, 2.0, 100);
    for (size_t i = 0; i < frame.pixels.size(); ++i) {
        const int32_t sum = shaped.pixels[i] + frame.pixels[i] - base.pixels[i];
        ASSERT_EQ(result.pixels[i], std::max(0, std::min(4095, sum))) << i;
    }
}

TEST(HistogramShapedUnsharp, SmallAndFlatFramesAndHostileKeysAreSafe) {
    const double hostile[] = {0.0, -1.0, 1e308, std::numeric_limits<double>::quiet_NaN()};
    for (const Frame& frame : {Frame(0, 3), Flat(1, 1, 4095), Noise(1, 40, 4095, 1), Noise(40, 1, 4095, 2),
                               Noise(2, 2, 4095, 3), Flat(9, 9, 0), Flat(9, 9, 65535)}) {
        for (const double value : hostile) {
            for (const int32_t noise : {std::numeric_limits<int32_t>::min(), 0, kHostile}) {
                for (const Frame& result :
                     {Sharpen(frame, value, 2.0, noise), Sharpen(frame, 3.0, value, noise)})
                    EXPECT_LE(MaxPixel(result.Data(), result.width, result.height), 4095);
            }
        }
    }
    EXPECT_THAT(Sharpen(Flat(9, 9, 700), 3.0, 2.0, 50, -1), EqualsFrame(Flat(9, 9, 0)));
}

// A difference past 16 bits with a sign wraps: results depend on it.
TEST(ShapeDetail, DetailIsOfSixteenBits) {
    const Frame spot = Impulse(9, 9, 4, 4, 65535);
    for (const int32_t noise : {0, 100})
        EXPECT_THAT(Shape(spot, 2.0, 1.0, noise, nullptr, 65535),
                    EqualsFrame(ShapeStepByStep(spot, 65535, 2.0, 1.0, noise, nullptr)));
}

}  // namespace
}  // namespace vastrelline
