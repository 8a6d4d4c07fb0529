// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "operators/histogram/Histogram.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

using Bins = std::vector<uint32_t>;

struct HistogramCase {
    const char* name;
    Frame frame;
    int32_t maxValue;
    Bins clamped;
    Bins unclamped;
};

class BuildHistogramTest : public testing::TestWithParam<HistogramCase> {};

TEST_P(BuildHistogramTest, CountsThePixelsOfEachLevel) {
    const HistogramCase& test = GetParam();
    const Frame& frame = test.frame;
    EXPECT_EQ(BuildHistogram(frame.Data(), frame.width, frame.height, test.maxValue), test.clamped);
    EXPECT_EQ(BuildUnclampedHistogram(frame.Data(), frame.width, frame.height, test.maxValue),
              test.unclamped);
}

INSTANTIATE_TEST_SUITE_P(
    Edges, BuildHistogramTest,
    testing::Values(
        HistogramCase{"EmptyFrame", Frame(0, 0), 3, {0, 0, 0, 0}, {0, 0, 0, 0}},
        HistogramCase{"TwoRows", FromRows({{0, 1, 1}, {3, 1, 0}}), 3, {2, 3, 0, 1}, {2, 3, 0, 1}},
        HistogramCase{"TopLevelIsInRange", Flat(1, 1, 3), 3, {0, 0, 0, 1}, {0, 0, 0, 1}},
        HistogramCase{
            "AboveTopCountsAsTopOrNotAtAll", FromRows({{4, 65535, 2}}), 3, {0, 0, 1, 2}, {0, 0, 1, 0}},
        HistogramCase{"OneBin", FromRows({{0, 1, 65535}}), 0, {3}, {1}},
        HistogramCase{"NoBins", FromRows({{0, 1}}), -1, {}, {}},
        HistogramCase{"OneColumn", FromRows({{2}, {2}, {0}, {2}, {1}}), 2, {1, 1, 3}, {1, 1, 3}}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(BuildHistogram, SixteenBitsHaveABinForEveryLevel) {
    const Frame frame = FromRows({{0, 65535, 65534}, {65535, 0x8000, 0}});
    const Bins bins = BuildHistogram(frame.Data(), 3, 2, 65535);
    ASSERT_EQ(bins.size(), 65536U);
    EXPECT_EQ(bins[0], 2U);
    EXPECT_EQ(bins[0x8000], 1U);
    EXPECT_EQ(bins[65534], 1U);
    EXPECT_EQ(bins[65535], 2U);
}

TEST(BuildHistogram, CountsEveryPixelOnceWhateverTheirNumber) {
    for (int32_t width = 1; width <= 19; ++width) {
        const Frame frame = Noise(width, 1, 7, 5);
        const Bins bins = BuildHistogram(frame.Data(), width, 1, 7);
        for (size_t level = 0; level < 8; ++level)
            EXPECT_EQ(bins[level], std::count(frame.pixels.begin(), frame.pixels.end(), level));
    }
}

TEST(BuildHistogram, DoesNotDependOnTheOrientation) {
    const Frame frame = Noise(31, 17, 255, 6);
    const Frame mirrored = MirrorLeftRight(frame);
    EXPECT_EQ(BuildHistogram(frame.Data(), 31, 17, 255), BuildHistogram(mirrored.Data(), 31, 17, 255));
}

Bins Smoothed(const Bins& histogram, int32_t window) {
    Bins smoothed(histogram.size(), 99);
    SmoothHistogram(histogram.data(), smoothed.data(), static_cast<int32_t>(histogram.size()), window);
    return smoothed;
}

struct SmoothCase {
    const char* name;
    int32_t window;
    Bins histogram;
    Bins smoothed;
};

class SmoothHistogramTest : public testing::TestWithParam<SmoothCase> {};

TEST_P(SmoothHistogramTest, AveragesOneShortOfSymmetric) {
    EXPECT_EQ(Smoothed(GetParam().histogram, GetParam().window), GetParam().smoothed);
}

INSTANTIATE_TEST_SUITE_P(
    Windows, SmoothHistogramTest,
    testing::Values(
        // Bin i sums i - 1 and i: the first is 3 / 1, the next (3 + 6) / 3, the last (18 + 21) / 2.
        SmoothCase{"WindowOf3", 3, {3, 6, 9, 12, 15, 18, 21}, {3, 3, 5, 7, 9, 11, 19}},
        SmoothCase{"EvenWindowIsRaisedByOne", 2, {3, 6, 9, 12, 15, 18, 21}, {3, 3, 5, 7, 9, 11, 19}},
        // 7 / 1, 7 / 3, ..., 5 / 2.
        SmoothCase{"AveragesAreRoundedDown", 3, {7, 0, 0, 0, 0, 0, 5}, {7, 2, 0, 0, 0, 0, 2}},
        // Bin i sums i - 2 to i + 1: 30 / 2, 60 / 3, 100 / 5 to 260 / 5, 300 / 4, 240 / 3.
        SmoothCase{
            "WindowOf5", 5, {10, 20, 30, 40, 50, 60, 70, 80, 90}, {15, 20, 20, 28, 36, 44, 52, 75, 80}},
        SmoothCase{"ThreeMoreBinsThanTheWindowAreCopied", 3, {9, 0, 9, 0, 9, 0}, {9, 0, 9, 0, 9, 0}},
        SmoothCase{"EvenWindowCountsRaisedForTheCopy", 4, {9, 0, 9, 0, 9, 0, 9, 0}, {9, 0, 9, 0, 9, 0, 9, 0}},
        SmoothCase{"WindowOf1SumsNoBin", 1, {5, 5, 5, 5, 5}, {0, 0, 0, 0, 0}},
        SmoothCase{"WindowOf0IsRaisedTo1", 0, {5, 5, 5, 5, 5}, {0, 0, 0, 0, 0}},
        SmoothCase{"NoBins", 50, {}, {}}, SmoothCase{"OneBin", 50, {8}, {8}}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(SmoothHistogram, FlatHistogramIsALittleLowBetweenItsEnds) {
    // Window 51: 25 bins at each end keep their level, between them 50 bins are divided by 51.
    const Bins smoothed = Smoothed(Bins(100, 51), 50);
    for (size_t bin = 0; bin < 100; ++bin) EXPECT_EQ(smoothed[bin], bin < 25 || bin >= 75 ? 51U : 50U) << bin;
}

// The average summed anew for each bin.
uint32_t AverageAround(const Bins& histogram, int32_t bin, int32_t window) {
    const int32_t half = window / 2;
    const int32_t bins = static_cast<int32_t>(histogram.size());
    uint32_t sum = 0;
    uint32_t count = 0;
    for (int32_t i = bin - half; i <= bin + half - 1; ++i) {
        if (i < 0 || i >= bins) continue;
        sum += histogram[static_cast<size_t>(i)];
        ++count;
    }
    return sum / (bin >= half && bin <= bins - half - 1 ? static_cast<uint32_t>(window) : count);
}

TEST(SmoothHistogram, RunningSumAgreesWithASumPerBin) {
    std::mt19937 random(20240501);
    for (const int32_t window : {3, 5, 51, 101})
        for (const int32_t bins : {window + 4, window + 5, 4096}) {
            Bins histogram(static_cast<size_t>(bins));
            for (uint32_t& count : histogram) count = static_cast<uint32_t>(random() % 3000);
            const Bins smoothed = Smoothed(histogram, window);
            for (int32_t bin = 0; bin < bins; ++bin)
                ASSERT_EQ(smoothed[static_cast<size_t>(bin)], AverageAround(histogram, bin, window))
                    << "bin " << bin << " of " << bins << ", window " << window;
        }
}

TEST(SmoothHistogram, NoCountIsLostInTheLargestFrames) {
    // 5000 * 5000 pixels in one bin.
    Bins histogram(100);
    histogram[50] = 25000000;
    EXPECT_EQ(Smoothed(histogram, 50)[50], 25000000U / 51);
}

struct CutCase {
    const char* name;
    Bins histogram;
    int32_t limit;
    int32_t low;
    int32_t high;
};

class FindHistogramCutTest : public testing::TestWithParam<CutCase> {};

TEST_P(FindHistogramCutTest, FindsTheFirstAndTheLastLevelAboveTheLimit) {
    const HistogramCut cut = FindHistogramCut(GetParam().histogram, GetParam().limit);
    EXPECT_EQ(cut.low, GetParam().low);
    EXPECT_EQ(cut.high, GetParam().high);
}

// `bins` zeros but for the same count in bins first to last.
Bins Plateau(size_t bins, size_t first, size_t last, uint32_t count) {
    Bins histogram(bins);
    for (size_t bin = first; bin <= last; ++bin) histogram[bin] = count;
    return histogram;
}

Bins WithBin(Bins histogram, size_t bin, uint32_t count) {
    histogram.at(bin) = count;
    return histogram;
}

// Up to 54 bins are not smoothed.
INSTANTIATE_TEST_SUITE_P(
    Edges, FindHistogramCutTest,
    testing::Values(CutCase{"LevelsAtTheLimitDoNotCount", {0, 10, 11, 9, 12, 10}, 10, 2, 4},
                    CutCase{"NothingAboveTheLimit", {0, 10, 12}, 12, -1, -1},
                    CutCase{"LevelZeroIsNoHighEnd", {20, 0, 0}, 10, 0, -1},
                    CutCase{"OneLevelIsBothEnds", {0, 0, 20, 0}, 10, 2, 2}, CutCase{"NoBins", {}, 0, -1, -1},
                    CutCase{"NegativeLimitTakesEveryOccupiedLevel", {0, 1, 0, 1, 0}, -1, 1, 3},
                    // Smoothed to 5100 / 51 = 100 over bins 76 to 125, but only one of them is occupied.
                    CutCase{"EmptyLevelsBesideASpikeDoNotCount", Plateau(300, 100, 100, 5100), 99, 100, 100},
                    CutCase{"SmoothedSpikeAtTheLimitDoesNotCount", Plateau(300, 100, 100, 5100), 100, -1, -1},
                    // Above 4 needs 26 bins of 10 in the window i - 25 to i + 24: from bin 101 on, and up to
                    // the last bin, since the window is one short on the right.
                    CutCase{"CutIsOneShortOfSymmetric", Plateau(400, 100, 199, 10), 4, 101, 199},
                    CutCase{"LonelyLevelIsLeftOut", WithBin(Plateau(400, 100, 199, 10), 30, 1), 4, 101, 199}),
    [](const auto& test) { return std::string(test.param.name); });

// Past one and two blocks of the walk; only the second one holds a pixel above the top.
TEST(BuildHistogram, EveryBlockIsCountedOnce) {
    for (const int32_t count : {4095, 4096, 4097, 8191, 8192, 8193, 12301}) {
        Frame frame = Noise(count, 1, 7, 7);
        if (count > 5000) frame.At(5000, 0) = 60000;
        std::vector<uint32_t> expected(8);
        std::vector<uint32_t> unclamped(8);
        for (const uint16_t pixel : frame.pixels) {
            ++expected[std::min<size_t>(pixel, 7)];
            if (pixel <= 7) ++unclamped[pixel];
        }
        EXPECT_EQ(BuildHistogram(frame.Data(), count, 1, 7), expected) << count;
        EXPECT_EQ(BuildUnclampedHistogram(frame.Data(), count, 1, 7), unclamped) << count;
    }
}

// The extra bin of 65534 is the last level there is; at 65535 there is none.
TEST(BuildUnclampedHistogram, TopLevelsOfSixteenBits) {
    const Frame frame = FromRows({{65535, 65534, 65535}});
    for (const auto& [maxValue, last] : {std::pair{65533, 0U}, {65534, 1U}, {65535, 2U}, {65536, 0U}})
        EXPECT_EQ(BuildUnclampedHistogram(frame.Data(), 3, 1, maxValue).back(), last) << maxValue;
}

}  // namespace
}  // namespace vastrelline
