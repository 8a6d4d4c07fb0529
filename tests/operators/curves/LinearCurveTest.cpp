// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "operators/curves/LinearCurve.h"
#include "operators/curves/LookupTable.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kFromHistogram = 0;
constexpr int32_t kFromPixelCount = 1;
constexpr int32_t kFullRange = -1;

Frame Apply(Frame frame, int32_t maxValue, int32_t outputRange, int32_t limitBin, int32_t mode) {
    ApplyLookupTable(
        frame.Data(), frame.width, frame.height,
        BuildLinearCurve(frame.Data(), frame.width, frame.height, maxValue, outputRange, limitBin, mode));
    return frame;
}

// Pixels of one level, then a few others, in one row.
Frame ManyAnd(int32_t count, uint16_t level, const std::vector<uint16_t>& others) {
    std::vector<uint16_t> pixels(static_cast<size_t>(count), level);
    pixels.insert(pixels.end(), others.begin(), others.end());
    const auto width = static_cast<int32_t>(pixels.size());
    return {width, 1, pixels};
}

TEST(RampEntry, TruncatesWithinTheOutput) {
    EXPECT_EQ(RampEntry(100, 0.0), 0);
    EXPECT_EQ(RampEntry(100, 0.999), 99);
    EXPECT_EQ(RampEntry(100, 1.0), 100);
    EXPECT_EQ(RampEntry(100, -0.5), 0);
    EXPECT_EQ(RampEntry(100, 1.5), 100);
    EXPECT_EQ(RampEntry(65535, 1e300), 65535);
    EXPECT_EQ(RampEntry(-100, 0.5), 0);
    EXPECT_EQ(RampEntry(-100, -0.5), 0);
    EXPECT_EQ(RampEntry(100, std::numeric_limits<double>::quiet_NaN()), 0);
}

struct RampCase {
    const char* name;
    int32_t mode;
    int32_t limitBin;
    std::vector<uint16_t> pixels;  // of {0, 1, 1, 1, 3, 3, 4}, at maxValue 6 and outputRange 100
};

class RampTest : public testing::TestWithParam<RampCase> {};

TEST_P(RampTest, EveryLevelTakesItsPlaceOnTheRamp) {
    const Frame frame = FromRows({{0, 1, 1, 1, 3, 3, 4}});
    EXPECT_THAT(Apply(frame, 6, 100, GetParam().limitBin, GetParam().mode),
                EqualsFrame(Frame(7, 1, GetParam().pixels)));
}

// So few bins are not smoothed: 1, 3, 0, 2, 1, 0, 0. Hundredths of the top: of 6 they are 16.67, 50 and
// 66.67, of 4 25, 75, 100, of 3 33.33, 100.
INSTANTIATE_TEST_SUITE_P(
    FromHistogram, RampTest,
    testing::Values(RampCase{"LastLevelAboveTheLimit", kFromHistogram, 0, {0, 25, 25, 25, 75, 75, 100}},
                    RampCase{"OnePixelIsNotAboveOne", kFromHistogram, 1, {0, 33, 33, 33, 100, 100, 100}},
                    RampCase{"LowerLevel", kFromHistogram, 2, {0, 100, 100, 100, 100, 100, 100}},
                    RampCase{"LimitAboveEveryBin", kFromHistogram, 3, {0, 16, 16, 16, 50, 50, 66}},
                    RampCase{"LargestLimit", kFromHistogram, INT_MAX, {0, 16, 16, 16, 50, 50, 66}},
                    RampCase{"FullRange", kFromHistogram, kFullRange, {0, 16, 16, 16, 50, 50, 66}},
                    RampCase{"BelowMinusOneIsALimit", kFromHistogram, -2, {0, 25, 25, 25, 75, 75, 100}},
                    RampCase{"OtherModeIsTheSame", 3, 1, {0, 33, 33, 33, 100, 100, 100}},
                    RampCase{"NegativeModeIsTheSame", -1, 1, {0, 33, 33, 33, 100, 100, 100}},
                    RampCase{"FullRangeInAnyOtherMode", 7, kFullRange, {0, 16, 16, 16, 50, 50, 66}}),
    [](const auto& test) { return std::string(test.param.name); });

// From the top down the counts add up to 0, 0, 1, 3, 3, 6; level 0 is not looked at.
INSTANTIATE_TEST_SUITE_P(
    FromPixelCount, RampTest,
    testing::Values(RampCase{"FirstPixel", kFromPixelCount, 0, {0, 25, 25, 25, 75, 75, 100}},
                    RampCase{"StrictlyBelowTheSum", kFromPixelCount, 1, {0, 33, 33, 33, 100, 100, 100}},
                    RampCase{"LastOfALevel", kFromPixelCount, 2, {0, 33, 33, 33, 100, 100, 100}},
                    RampCase{"LowestLevel", kFromPixelCount, 3, {0, 100, 100, 100, 100, 100, 100}},
                    RampCase{"OneBelowAllPixels", kFromPixelCount, 5, {0, 100, 100, 100, 100, 100, 100}},
                    RampCase{"AllPixelsAboveZero", kFromPixelCount, 6, {0, 0, 0, 0, 0, 0, 0}},
                    RampCase{"LargestLimit", kFromPixelCount, INT_MAX, {0, 0, 0, 0, 0, 0, 0}},
                    RampCase{"MinusOneIsPassedAtTheTop", kFromPixelCount, -1, {0, 16, 16, 16, 50, 50, 66}},
                    RampCase{"SmallestLimit", kFromPixelCount, INT_MIN, {0, 16, 16, 16, 50, 50, 66}}),
    [](const auto& test) { return std::string(test.param.name); });

// 51 pixels fill the average of a window of 51 bins, 50 do not.
TEST(LinearCurve, IsolatedBrightPixelDoesNotSetTheTop) {
    // The top is 1000: 500 becomes 4095 / 2.
    EXPECT_THAT(Apply(ManyAnd(51, 1000, {0, 500, 3000}), 4095, 4095, 0, kFromHistogram),
                EqualsFrame(ManyAnd(51, 4095, {0, 2047, 4095})));
    // No average reaches 1, so the top is 4095 itself.
    EXPECT_THAT(Apply(ManyAnd(50, 1000, {0, 500, 3000}), 4095, 8190, 0, kFromHistogram),
                EqualsFrame(ManyAnd(50, 2000, {0, 1000, 6000})));
}

// The average of a bin takes in 25 bins below it, but the bin must not be empty itself.
TEST(LinearCurve, BrightPixelNearTheCrowdSetsTheTop) {
    EXPECT_THAT(Apply(ManyAnd(51, 1000, {205, 1025}), 4095, 4100, 0, kFromHistogram),
                EqualsFrame(ManyAnd(51, 4000, {820, 4100})));
    EXPECT_THAT(Apply(ManyAnd(51, 1000, {250, 1026}), 4095, 4100, 0, kFromHistogram),
                EqualsFrame(ManyAnd(51, 4100, {1025, 4100})));
}

// The average of 51 bins would be below 1 here; at 54 bins and less there is none.
TEST(LinearCurve, NarrowHistogramIsNotSmoothed) {
    EXPECT_THAT(Apply(FromRows({{10, 20}}), 53, 40, 0, kFromHistogram), EqualsFrame(FromRows({{20, 40}})));
    EXPECT_THAT(Apply(FromRows({{10, 20}}), 54, 54, 0, kFromHistogram), EqualsFrame(FromRows({{10, 20}})));
}

// The quotient comes first: 1 / 49 is rounded down, and 49 times that stays below 1.
TEST(LinearCurve, QuotientIsRoundedBeforeTheProduct) {
    EXPECT_THAT(Apply(FromRows({{1, 49}}), 49, 49, kFullRange, kFromHistogram),
                EqualsFrame(FromRows({{0, 49}})));
}

TEST(LinearCurve, LevelsAboveTheTopStayAtTheTop) {
    // 65535 * 65535 has no 32-bit integer.
    EXPECT_THAT(Apply(FromRows({{0, 1, 2, 65535}}), 65535, 65535, 2, kFromPixelCount),
                EqualsFrame(FromRows({{0, 65535, 65535, 65535}})));
    EXPECT_THAT(Apply(FromRows({{0, 1, 2, 65535}}), 65535, 50, 1, kFromPixelCount),
                EqualsFrame(FromRows({{0, 25, 50, 50}})));
}

TEST(LinearCurve, OutputRangeOfZeroOrLessMakesBlack) {
    for (const int32_t range : {0, -1, -4095, INT_MIN}) {
        EXPECT_THAT(Apply(FromRows({{0, 3, 6}}), 6, range, kFullRange, kFromHistogram),
                    EqualsFrame(Flat(3, 1, 0)))
            << range;
    }
}

TEST(LinearCurve, PixelsAboveTheTopLevelAreNotCountedAndTakeTheLastEntry) {
    // Only 5 and 4 count: the top is 5.
    EXPECT_THAT(Apply(FromRows({{4, 5, 11, 65535}}), 10, 100, 0, kFromPixelCount),
                EqualsFrame(FromRows({{80, 100, 100, 100}})));
    // The last entry is that of level 10: 50 * 10 / 10.
    EXPECT_THAT(Apply(FromRows({{4, 5, 11, 65535}}), 10, 50, kFullRange, kFromHistogram),
                EqualsFrame(FromRows({{20, 25, 50, 50}})));
}

TEST(LinearCurve, TopLevelOfZeroMakesBlack) {
    for (const int32_t mode : {kFromHistogram, kFromPixelCount})
        for (const int32_t limitBin : {-2, -1, 0, 5}) {
            EXPECT_THAT(Apply(FromRows({{0, 7}}), 0, 100, limitBin, mode), EqualsFrame(Flat(2, 1, 0)))
                << mode << ", " << limitBin;
        }
}

TEST(LinearCurve, FrameWithoutPixelsGivesTheFullRange) {
    EXPECT_EQ(BuildLinearCurve(nullptr, 0, 0, 6, 6, 0, kFromHistogram),
              (std::vector<uint16_t>{0, 1, 2, 3, 4, 5, 6}));
}

// Frames of 17 bits and more come down to 16 with these arguments.
TEST(LinearCurve, WideFrameIsRescaledFromItsCrowdedTop) {
    // 51 pixels at 40000 stand out; 65535 is a lone one: 65535 * 10000 / 40000 is 16383.75.
    EXPECT_THAT(Apply(ManyAnd(51, 40000, {10000, 65535}), 131071, 65535, 0, kFromHistogram),
                EqualsFrame(ManyAnd(51, 65535, {16383, 65535})));
    // 51 pixels at the very top of a pixel's range: nothing changes but for a quotient that rounds down.
    EXPECT_THAT(Apply(ManyAnd(51, 65535, {0, 1, 32768}), 131071, 65535, 0, kFromHistogram),
                EqualsFrame(ManyAnd(51, 65535, {0, 1, 32768})));
    // Nothing stands out, so the top is 131071: 65535 * 65535 / 131071 is 32767.25.
    EXPECT_THAT(Apply(FromRows({{0, 1000, 65535}}), 131071, 65535, 0, kFromHistogram),
                EqualsFrame(FromRows({{0, 499, 32767}})));
    // As far as 31 bits: 65535 * 65535 / 2147483647 is 1.99994.
    EXPECT_THAT(Apply(FromRows({{0, 1000, 65535}}), INT_MAX, 65535, 0, kFromHistogram),
                EqualsFrame(FromRows({{0, 0, 1}})));
}

}  // namespace
}  // namespace vastrelline
