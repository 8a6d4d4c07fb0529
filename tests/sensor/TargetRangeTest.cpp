// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "sensor/TargetRange.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

struct ThresholdCase {
    const char* name;
    std::vector<uint16_t> values;
    int32_t bins;
    float epsilon;
    int32_t low;
    int32_t high;
    int32_t threshold;
};

class FindIsodataThresholdTest : public testing::TestWithParam<ThresholdCase> {};

TEST_P(FindIsodataThresholdTest, MovesHalfwayToTheMiddleOfTheTwoMeans) {
    const ThresholdCase& test = GetParam();
    std::vector<uint16_t> values = test.values;
    values.shrink_to_fit();
    const auto count = static_cast<int32_t>(values.size());
    EXPECT_EQ(FindIsodataThreshold(values.data(), count, 1, test.bins, test.epsilon, test.low, test.high),
              test.threshold);
    EXPECT_EQ(FindIsodataThreshold(values.data(), 1, count, test.bins, test.epsilon, test.low, test.high),
              test.threshold);
}

// Every first value is 9: it must not count. The steps are those of the threshold.
INSTANTIATE_TEST_SUITE_P(
    Steps, FindIsodataThresholdTest,
    testing::Values(
        // Starts at 10. Nothing lies below, the rest has mean 15, so the middle is 7.5: 8.75, 7.75, 7.25
        ThresholdCase{"NothingBelowCountsAsMeanZero", {9, 10, 10, 20, 20}, 31, 0.0001F, 0, 31, 7},
        // Starts at 10. Mean 12.5, middle 6.25: 8.125, 7.125, 6.625, 6.125
        ThresholdCase{"StartsAtTheMedian", {9, 10, 10, 10, 20}, 31, 0.0001F, 0, 31, 6},
        // Starts at 2: means 0 and 46 / 3, to 4.83; at 4: means 2 and 22, to 8; at 8: means 3 and 40, so the
        // middle is 21.5: 14.75, 17.75, 19.25, 20.25, 20.75
        ThresholdCase{"MeansFollowTheThreshold", {9, 2, 4, 40}, 63, 0.0001F, 0, 63, 20},
        // At the start the means are 0 and 46 / 3: their middle is 7.67, the difference 15.33.
        ThresholdCase{"StopsWhereTheDifferenceIsJustTwiceTheMiddle", {9, 2, 4, 40}, 63, 2.0F, 0, 63, 2},
        // 7.67 * 1.9 is below 15.33; in the second round 12 * 1.9 = 22.8 is not below 22 - 2.
        ThresholdCase{"StopsWhereTheMeansAreNearEnough", {9, 2, 4, 40}, 63, 1.9F, 0, 63, 4},
        // One value is a half of 0: the start is `low`. Mean 5, middle 2.5: 1.25, 1.75
        ThresholdCase{"OneValueStartsAtTheLowestLevel", {9, 5}, 31, 0.0001F, 0, 31, 1},
        // Starts at 0: the bright part is all, mean (0 * 3 + 15) / 4 = 3.75, and a quarter of that is 0.
        ThresholdCase{"LevelZeroWeighsNothingInTheBrightPart", {9, 0, 0, 0, 15}, 31, 0.0001F, 0, 31, 0},
        // Starts at 0: mean 17 / 4, to 1.06. From 1 up the dark mean is (1 + 1 + 1) / 3, the bright 17,
        // their middle 9: 5, 7, 8, 8.5
        ThresholdCase{"LevelZeroWeighsAsOneInTheDarkPart", {9, 0, 0, 0, 17}, 31, 0.0001F, 0, 31, 8}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Limits, FindIsodataThresholdTest,
    testing::Values(
        ThresholdCase{"NoValues", {}, 31, 0.0001F, 0, 31, 0},
        ThresholdCase{"OnlyTheValueThatIsLeftOut", {9}, 31, 0.0001F, 0, 31, 0},
        // Starts at 31. Mean 31, middle 15.5: 23.25, 19.25, 17.25, 16.25, 15.75, 15.25
        ThresholdCase{"ValueEqualToTheBinsCounts", {9, 31, 31}, 31, 0.0001F, 0, 31, 15},
        ThresholdCase{"ValuesAboveTheBinsDoNotCount", {9, 32, 65535}, 31, 0.0001F, 0, 31, 0},
        ThresholdCase{"NothingBetweenLowAndHighGivesLow", {9, 1, 1, 30}, 31, 0.0001F, 5, 29, 5},
        // The values below 5 and above 20 are not looked at: starts at 10, as in the first case above.
        ThresholdCase{"OnlyLevelsFromLowToHighCount", {9, 10, 10, 20, 20, 4, 4, 21}, 31, 0.0001F, 5, 20, 7},
        ThresholdCase{"HighBelowLowGivesZero", {9, 1, 2}, 31, 0.0001F, 9, 8, 0},
        ThresholdCase{"OneBin", {9, 0, 0}, 0, 0.0001F, 0, 0, 0}),
    [](const auto& test) { return std::string(test.param.name); });

// A frame of 16 x 16 pixels, so that fractions of its pixels are exact: first all of the first level.
Frame OfLevels(std::initializer_list<std::pair<uint16_t, size_t>> counts) {
    std::vector<uint16_t> pixels;
    for (const auto& [level, count] : counts) pixels.insert(pixels.end(), count, level);
    return {16, 16, std::move(pixels)};
}

Frame Ranged(Frame frame, int32_t targetRange, int32_t minimumValue, float maxCut, float minCut) {
    ApplyTargetRange(frame.Data(), frame.width, frame.height, targetRange, minimumValue, maxCut, minCut);
    return frame;
}

// 128 pixels each of levels 100 and 2000. With a cut of 4 pixels, the table of the top holds 2000, and below
// it 2000, 1999, ... 1982, for each level fills one slot. Without the first that is 1983..2000 and 2000: the
// median is 1991, the means 1986.5 and 21955 / 11 = 1995.9, their middle 1991.2, so the high cut is 1991.
Frame Wide() { return OfLevels({{100, 128}, {2000, 128}}); }
constexpr float kFourPixels = 1.0F / 64;

struct RangeCase {
    const char* name;
    int32_t targetRange;
    int32_t minimumValue;
    float maxCut;
    float minCut;
    uint16_t dark;    // what 100 becomes
    uint16_t bright;  // what 2000 becomes
};

class ApplyTargetRangeTest : public testing::TestWithParam<RangeCase> {};

TEST_P(ApplyTargetRangeTest, ScalesTheFrameAboutZero) {
    const RangeCase& test = GetParam();
    EXPECT_THAT(Ranged(Wide(), test.targetRange, test.minimumValue, test.maxCut, test.minCut),
                EqualsFrame(OfLevels({{test.dark, 128}, {test.bright, 128}})));
}

INSTANTIATE_TEST_SUITE_P(
    Cuts, ApplyTargetRangeTest,
    testing::Values(
        // The range is 1991 - 100 = 1891.
        RangeCase{"TargetZeroLeavesTheFrame", 0, 0, kFourPixels, 0.0F, 100, 2000},
        RangeCase{"NegativeTargetLeavesTheFrame", -4000, 0, kFourPixels, 0.0F, 100, 2000},
        RangeCase{"TargetEqualToTheRangeLeavesTheFrame", 1891, 0, kFourPixels, 0.0F, 100, 2000},
        // 1892 * 1900 / 1891 = 1901.005; 100 / 2000 * 1901 = 95.05
        RangeCase{"TargetOneAboveTheRangeScales", 1892, 0, kFourPixels, 0.0F, 95, 1901},
        // 3000 * 1900 / 1891 = 3014.28; 3014 / 20 = 150.7
        RangeCase{"FrameReachesTheTarget", 3000, 0, kFourPixels, 0.0F, 150, 3014},
        // 1991 * 1900 / 1891 = 2000.48
        RangeCase{"ScaleEqualToTheLargestLeavesTheFrame", 1991, 0, kFourPixels, 0.0F, 100, 2000},
        // 4076 * 1900 / 1891 = 4095.4 and 5000 * 1900 / 1891 = 5023.8; 4095 / 20 = 204.75
        RangeCase{"ScaleEndsAt4095", 4076, 0, kFourPixels, 0.0F, 204, 4095},
        RangeCase{"LargerScaleIsClampedTo4095", 5000, 0, kFourPixels, 0.0F, 204, 4095},
        // The low cut of 100 is not below 100.
        RangeCase{"MinimumEqualToTheLowCutDoesNothing", 1891, 100, kFourPixels, 0.0F, 100, 2000},
        // 250 as the low cut: the range is 1741. 1891 * 1900 / 1741 = 2063.7; 2063 / 20 = 103.15
        RangeCase{"MinimumIsAddedToTheLowCut", 1891, 150, kFourPixels, 0.0F, 103, 2063},
        RangeCase{"NegativeMinimumDoesNothing", 1891, -1000, kFourPixels, 0.0F, 100, 2000},
        // From here on the range is clamped to 200: 201 * 1900 / 200 = 1909.5; 1909 / 20 = 95.45
        RangeCase{"HighCutFarBelowTheLowCut", 201, 3000, kFourPixels, 0.0F, 95, 1909},
        RangeCase{"NarrowestRangeIs200", 200, 3000, kFourPixels, 0.0F, 100, 2000},
        // 128 pixels do not pass a count of 128: the low cut is 2000.
        RangeCase{"LowCutIsWhereTheCountPasses", 201, 0, kFourPixels, 0.5F, 95, 1909},
        RangeCase{"LowCutOfALowerCount", 1891, 0, kFourPixels, 0.25F, 100, 2000},
        RangeCase{"NegativeMinCutCutsNothing", 1891, 0, kFourPixels, -1.0F, 100, 2000},
        RangeCase{"MinCutOfAllPixelsLeavesTheFrame", 3000, 0, kFourPixels, 1.0F, 100, 2000},
        RangeCase{"MinCutOfMoreThanAllLeavesTheFrame", 3000, 0, kFourPixels, 7.0F, 100, 2000},
        // 128 pixels do not pass 128: slot 18 is 100, all below it is 0, and the threshold of 1002 is clamped
        // to slot 18.
        RangeCase{"HighCutIsAtMostTheFirstStepFromTheTop", 201, 0, 0.5F, 0.0F, 95, 1909},
        RangeCase{"MaxCutOfAllPixelsFillsNoSlot", 201, 0, 1.0F, 0.0F, 95, 1909},
        // A limit of 0 is passed from the first occupied level on: the table is the same.
        RangeCase{"MaxCutZeroStepsLevelByLevel", 1891, 0, 0.0F, 0.0F, 100, 2000},
        RangeCase{"MaxCutZeroStepsLevelByLevelAndScales", 1892, 0, 0.0F, 0.0F, 95, 1901},
        // A limit below 0 is passed by empty levels: 4095..4077 fill the slots. Of them only 2000 is not
        // above the top; the threshold goes from 0 by 500, 750 and on to 999, just below its half. The range
        // is 899: 900 * 1900 / 899 = 1902.1
        RangeCase{"NegativeMaxCutStepsThroughEmptyLevels", 899, 0, -1.0F, 0.0F, 100, 2000},
        RangeCase{"NegativeMaxCutScales", 900, 0, -1.0F, 0.0F, 95, 1902}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(ApplyTargetRange, NarrowFrameCountsAs200Levels) {
    // The high cut is 1091, by the reckoning above; the range of 91 becomes 200.
    // 400 * 100 / 200 = 200; 1000 / 1100 * 200 = 181.8
    EXPECT_THAT(Ranged(OfLevels({{1000, 128}, {1100, 128}}), 400, 0, kFourPixels, 0.0F),
                EqualsFrame(OfLevels({{181, 128}, {200, 128}})));
}

TEST(ApplyTargetRange, FractionsOfAStepFromTheTopAddUp) {
    // A cut of 1.5 pixels: the limits are 1, 3, 4, ... Level 2000 brings the count to 3, which is not above
    // the second, so the table is 3000, 1000, 999, ... 983, and 3000. Of the last 19 the median is 992; the
    // threshold goes by 1082, 1539 and on to 1995, just below the middle of 992 and 3000. The range is 995.
    const Frame frame = OfLevels({{3000, 2}, {2000, 1}, {1000, 253}});
    constexpr float kOneAndAHalfPixels = 1.5F / 256;
    EXPECT_THAT(Ranged(frame, 995, 0, kOneAndAHalfPixels, 0.0F), EqualsFrame(frame));
    // 996 * 2000 / 995 = 2002.01; 2000 / 3000 and 1000 / 3000 of 2002 are 1334.67 and 667.33
    EXPECT_THAT(Ranged(frame, 996, 0, kOneAndAHalfPixels, 0.0F),
                EqualsFrame(OfLevels({{2002, 2}, {1334, 1}, {667, 253}})));
}

TEST(ApplyTargetRange, BlackFrameStays) {
    EXPECT_THAT(Ranged(Flat(4, 3, 0), 4095, 0, kFourPixels, 0.0F), EqualsFrame(Flat(4, 3, 0)));
}

TEST(ApplyTargetRange, FrameOfOneLevelBecomesBlackOrStays) {
    EXPECT_THAT(Ranged(Flat(4, 3, 700), 200, 0, kFourPixels, 0.0F), EqualsFrame(Flat(4, 3, 700)));
    EXPECT_THAT(Ranged(Flat(4, 3, 700), 201, 0, kFourPixels, 0.0F), EqualsFrame(Flat(4, 3, 0)));
    EXPECT_THAT(Ranged(Flat(1, 1, 7), 200, 0, kFourPixels, 0.0F), EqualsFrame(Flat(1, 1, 7)));
    EXPECT_THAT(Ranged(Flat(1, 1, 7), 201, 0, kFourPixels, 0.0F), EqualsFrame(Flat(1, 1, 0)));
}

TEST(ApplyTargetRange, PixelsAbove4095CountAs4095ButScaleByTheirOwnLevel) {
    // Level 4095 in the estimate: the high cut is 4086, the range 3986.
    const Frame frame = OfLevels({{100, 128}, {65535, 128}});
    EXPECT_THAT(Ranged(frame, 3986, 0, kFourPixels, 0.0F), EqualsFrame(frame));
    // 3987 * 65435 / 3986 is clamped to 4095; 100 / 65535 * 4095 = 6.2
    EXPECT_THAT(Ranged(frame, 3987, 0, kFourPixels, 0.0F), EqualsFrame(OfLevels({{6, 128}, {4095, 128}})));
}

TEST(ApplyTargetRange, SmallestPixelCountsAs4096AtMost) {
    // Both levels are 4095 in the estimate: the low cut is 4095, the range 200.
    // 300 * (4196 - 4096) / 200 = 150; 4100 / 4196 * 150 = 146.6
    EXPECT_THAT(Ranged(OfLevels({{4100, 128}, {4196, 128}}), 300, 0, kFourPixels, 0.0F),
                EqualsFrame(OfLevels({{146, 128}, {150, 128}})));
}

TEST(ApplyTargetRange, EmptyFramesAreLeftAlone) {
    EXPECT_THAT(Ranged(Frame(0, 0), 4095, 0, kFourPixels, 0.0F), EqualsFrame(Frame(0, 0)));
    EXPECT_THAT(Ranged(Frame(0, 3), 4095, 0, kFourPixels, 0.0F), EqualsFrame(Frame(0, 3)));
}

TEST(ApplyTargetRange, DoesTheSameToAMirroredFrame) {
    const Frame frame = Noise(37, 11, 1500, 3);
    const Frame ranged = Ranged(frame, 4000, 20, 0.01F, 0.02F);
    EXPECT_FALSE(ranged == frame);
    EXPECT_THAT(Ranged(MirrorLeftRight(frame), 4000, 20, 0.01F, 0.02F), EqualsFrame(MirrorLeftRight(ranged)));
    EXPECT_THAT(Ranged(MirrorTopBottom(frame), 4000, 20, 0.01F, 0.02F), EqualsFrame(MirrorTopBottom(ranged)));
}

}  // namespace
}  // namespace vastrelline
