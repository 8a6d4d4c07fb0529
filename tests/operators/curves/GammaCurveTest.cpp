// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "operators/curves/GammaCurve.h"
#include "operators/curves/LookupTable.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kLargestRange = std::numeric_limits<int32_t>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

using Table = std::vector<uint16_t>;

GammaCurve CurveOf(const Frame& frame, int32_t maxValue, int32_t outputRange, double gamma,
                   int32_t limitBin = 0, int32_t inverse = 0) {
    return BuildGammaCurve(frame.Data(), frame.width, frame.height, maxValue, outputRange, gamma, limitBin,
                           inverse);
}

Frame Mapped(Frame frame, int32_t maxValue, int32_t outputRange, double gamma) {
    ApplyLookupTable(frame.Data(), frame.width, frame.height,
                     CurveOf(frame, maxValue, outputRange, gamma).table);
    return frame;
}

// The curve over levels 10 to 14 of a table of 0 to 15. The levels stand for x = 0, 0.25, 0.5, 0.75, 1.
struct CurveCase {
    const char* name;
    double gamma;
    int32_t outputRange;
    int32_t inverse;
    uint16_t below;  // level 9
    Table entries;   // levels 10 to 14
    uint16_t above;  // level 15
};

class GammaCurveTest : public testing::TestWithParam<CurveCase> {};

TEST_P(GammaCurveTest, FollowsItsFormula) {
    const CurveCase& test = GetParam();
    const GammaCurve curve =
        CurveOf(FromRows({{12, 10, 14, 12}}), 15, test.outputRange, test.gamma, 0, test.inverse);
    EXPECT_EQ(curve.low, 10);
    EXPECT_EQ(curve.high, 14);
    Table expected(10, test.below);
    expected.insert(expected.end(), test.entries.begin(), test.entries.end());
    expected.push_back(test.above);
    EXPECT_EQ(curve.table, expected);
}

INSTANTIATE_TEST_SUITE_P(
    Positive, GammaCurveTest,
    testing::Values(
        // 101 * x
        CurveCase{"ExponentOneIsAStraightStretch", 1.0, 101, 0, 0, {0, 25, 50, 75, 101}, 101},
        // 101 * {0, 0.0625, 0.25, 0.5625, 1}
        CurveCase{"SquareDarkens", 2.0, 101, 0, 0, {0, 6, 25, 56, 101}, 101},
        // 101 * {0, 0.5, 0.7071, 0.8660, 1}
        CurveCase{"RootBrightens", 0.5, 101, 0, 0, {0, 50, 71, 87, 101}, 101},
        CurveCase{"ExponentZeroLiftsAllFromLowUp", 0.0, 101, 0, 0, {101, 101, 101, 101, 101}, 101},
        CurveCase{"NegativeZeroIsOfThePositiveFamily", -0.0, 101, 0, 0, {101, 101, 101, 101, 101}, 101},
        // pow(x, infinity) is 0 but for x = 1
        CurveCase{"InfiniteExponentKeepsTheTopOnly", kInfinity, 101, 0, 0, {0, 0, 0, 0, 101}, 101},
        // -25.25, -50.5, -75.75, -101 toward zero, then 65536 - 25, - 50, - 75, - 101
        CurveCase{"NegativeRangeWrapsInto16Bits", 1.0, -101, 0, 0, {0, 65511, 65486, 65461, 65435}, 65435},
        // 0x1FFFFFFF, 0x3FFFFFFF, 0x5FFFFFFF and 0x7FFFFFFF
        CurveCase{"LargestRangeKeepsTheLow16Bits",
                  1.0,
                  kLargestRange,
                  0,
                  0,
                  {0, 65535, 65535, 65535, 65535},
                  65535}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Negative, GammaCurveTest,
    testing::Values(
        // 101 * (1 - {1, 0.8660, 0.7071, 0.5, 0})
        CurveCase{"MinusTwoIsTheMirroredRoot", -2.0, 101, 0, 0, {0, 13, 29, 50, 101}, 101},
        CurveCase{"MinusOneIsAStraightStretch", -1.0, 101, 0, 0, {0, 25, 50, 75, 101}, 101},
        // 101 * (1 - {1, 0.5625, 0.25, 0.0625, 0})
        CurveCase{"MinusOneHalfIsTheMirroredSquare", -0.5, 101, 0, 0, {0, 44, 75, 94, 101}, 101},
        // 1 / infinity is 0, and pow(1 - x, 0) is 1 everywhere
        CurveCase{"MinusInfinityBlackensTheCurve", -kInfinity, 101, 0, 0, {0, 0, 0, 0, 0}, 101}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(Inverse, GammaCurveTest,
                         testing::Values(
                             // 101 - 101 * x; the tails stay where they are
                             CurveCase{
                                 "TurnsTheCurveButNotTheTails", 1.0, 101, 1, 0, {101, 75, 50, 25, 0}, 101},
                             CurveCase{"AnyValueButZeroTurns", 1.0, 101, -7, 0, {101, 75, 50, 25, 0}, 101},
                             // 101 - 101 * {0, 0.0625, 0.25, 0.5625, 1}
                             CurveCase{"TurnsTheSquare", 2.0, 101, 1, 0, {101, 94, 75, 44, 0}, 101},
                             // 101 - 101 * {0, 0.1340, 0.2929, 0.5, 1}
                             CurveCase{"TurnsTheNegativeFamily", -2.0, 101, 1, 0, {101, 87, 71, 50, 0}, 101}),
                         [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(OwnRange, GammaCurveTest,
                         testing::Values(
                             // 10 + 4 * {0, 0.125, 0.3536, 0.6495, 1}
                             CurveCase{
                                 "RangeZeroKeepsTheFramesOwnRange", 1.5, 0, 0, 10, {10, 10, 11, 12, 14}, 14},
                             // 14 - 4 * {0, 0.125, 0.3536, 0.6495, 1}
                             CurveCase{"RangeZeroTurned", 1.5, 0, 1, 10, {14, 13, 12, 11, 10}, 14}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(GammaCurve, ExponentThatIsNotANumberBlackensTheCurve) {
    EXPECT_EQ(CurveOf(FromRows({{1, 3}}), 4, 101, kNotANumber).table, (Table{0, 0, 0, 0, 101}));
}

TEST(GammaCurve, OneLevelFrameBecomesZero) {
    EXPECT_EQ(CurveOf(Flat(2, 2, 2), 4, 101, 2.0).table, (Table{0, 0, 0, 101, 101}));
    EXPECT_EQ(CurveOf(Flat(2, 2, 2), 4, 101, -2.0).table, (Table{0, 0, 0, 101, 101}));
    EXPECT_THAT(Mapped(Flat(3, 2, 2), 4, 101, 1.0), EqualsFrame(Flat(3, 2, 0)));
    EXPECT_THAT(Mapped(Flat(1, 1, 4), 4, 101, 1.0), EqualsFrame(Flat(1, 1, 0)));
}

TEST(GammaCurve, OneLevelFrameWithExponentZeroTakesTheTop) {
    EXPECT_EQ(CurveOf(Flat(2, 2, 2), 4, 101, 0.0).table, (Table{0, 0, 101, 101, 101}));
}

TEST(GammaCurve, TableOfOneLevelHoldsOneEntry) {
    EXPECT_EQ(CurveOf(Flat(2, 1, 0), 0, 101, 1.0).table, Table{0});
    EXPECT_THAT(Mapped(FromRows({{5, 9}}), 0, 101, 1.0), EqualsFrame(FromRows({{0, 0}})));
}

TEST(GammaCurve, FullTableOf16BitsReachesItsEnds) {
    const GammaCurve curve = CurveOf(FromRows({{0, 65535}}), 65535, 65535, 1.5);
    ASSERT_EQ(curve.table.size(), 65536U);
    EXPECT_EQ(curve.table.front(), 0);
    EXPECT_EQ(curve.table.back(), 65535);
}

TEST(GammaCurve, PixelsAboveTheTableTakeItsLastEntry) {
    // The range runs from 10 to 30, so that the last level, 20, stands for x = 0.5.
    const Frame frame = FromRows({{10, 30, 20, 15}});
    EXPECT_EQ(CurveOf(frame, 20, 101, 1.0).high, 30);
    EXPECT_THAT(Mapped(frame, 20, 101, 1.0), EqualsFrame(FromRows({{0, 50, 50, 25}})));
}

TEST(GammaCurve, EmptyFrameGivesATableOfZeros) {
    EXPECT_EQ(CurveOf(Frame(0, 0), 3, 101, 2.0).table, (Table{0, 0, 0, 0}));
    EXPECT_EQ(CurveOf(Frame(0, 0), 3, 0, 2.0, 1, 1).table, (Table{0, 0, 0, 0}));
    EXPECT_THAT(Mapped(Frame(0, 4), 3, 101, 2.0), EqualsFrame(Frame(0, 4)));
}

// Levels 2 and 12 once, 5 and 9 three times, over a table that is too short to be smoothed.
const Frame& FrameWithOutliers() {
    static const Frame frame = FromRows({{2, 5, 9, 12}, {5, 9, 5, 9}});
    return frame;
}

TEST(GammaCurve, LimitLeavesRareLevelsOut) {
    const GammaCurve curve = CurveOf(FrameWithOutliers(), 13, 101, 1.0, 2);
    EXPECT_EQ(curve.low, 5);
    EXPECT_EQ(curve.high, 9);
    EXPECT_EQ(curve.table, (Table{0, 0, 0, 0, 0, 0, 25, 50, 75, 101, 101, 101, 101, 101}));
}

TEST(GammaCurve, LimitThatNoLevelPassesKeepsTheFramesEnds) {
    const GammaCurve curve = CurveOf(FrameWithOutliers(), 13, 101, 1.0, 3);
    EXPECT_EQ(curve.low, 2);
    EXPECT_EQ(curve.high, 12);
}

TEST(GammaCurve, LimitOfZeroOrBelowIsNone) {
    for (const int32_t limitBin : {0, -1}) {
        const GammaCurve curve = CurveOf(FrameWithOutliers(), 13, 101, 1.0, limitBin);
        EXPECT_EQ(curve.low, 2);
        EXPECT_EQ(curve.high, 12);
    }
}

TEST(GammaCurve, LevelZeroIsNeverTheHighEndOfALimit) {
    // Three pixels of level 0 pass the limit: it becomes the low end, the high end stays the frame's.
    const GammaCurve curve = CurveOf(FromRows({{0, 0, 0, 7}}), 8, 101, 1.0, 2);
    EXPECT_EQ(curve.low, 0);
    EXPECT_EQ(curve.high, 7);
}

TEST(GammaCurve, PositiveCurveNeverFalls) {
    for (const double gamma : {0.3, 1.0, 2.2, -0.3, -2.2}) {
        const GammaCurve curve = CurveOf(FromRows({{100, 3900}}), 4095, 4095, gamma);
        for (size_t level = 1; level < curve.table.size(); ++level)
            ASSERT_LE(curve.table[level - 1], curve.table[level]) << "gamma " << gamma << ", level " << level;
    }
}

TEST(GammaCurve, MirroredFrameGivesTheMirroredResult) {
    const Frame frame = Noise(9, 5, 4095, 8);
    EXPECT_THAT(Mapped(MirrorLeftRight(frame), 4095, 4095, 1.7),
                EqualsFrame(MirrorLeftRight(Mapped(frame, 4095, 4095, 1.7))));
}

struct ChooseCase {
    const char* name;
    double ratio;
    int32_t outputRange;
    Frame frame;
    double gamma;
};

class ChooseGammaTest : public testing::TestWithParam<ChooseCase> {};

TEST_P(ChooseGammaTest, TakesTheExponentOrJudgesTheBrightness) {
    const ChooseCase& test = GetParam();
    EXPECT_DOUBLE_EQ(
        ChooseGamma(test.frame.Data(), test.frame.width, test.frame.height, test.outputRange, test.ratio),
        test.gamma);
}

INSTANTIATE_TEST_SUITE_P(Direct, ChooseGammaTest,
                         testing::Values(ChooseCase{"One", 1.0, 8, Flat(2, 2, 8), 1.0},
                                         ChooseCase{"MinusOne", -1.0, 8, Flat(2, 2, 8), -1.0},
                                         ChooseCase{"MinusTwo", -2.0, 8, Flat(2, 2, 8), -2.0},
                                         ChooseCase{"Fraction", 2.5, 8, Flat(2, 2, 8), 2.5},
                                         ChooseCase{"Infinite", kInfinity, 8, Flat(2, 2, 8), kInfinity},
                                         ChooseCase{"MinusInfinite", -kInfinity, 8, Flat(2, 2, 8),
                                                    -kInfinity}),
                         [](const auto& test) { return std::string(test.param.name); });

// With an output range of 8, level 8 gives 2, 7 gives 1.75, 6 gives 1.5, 5 gives 1.25, 4 and below give 1.
INSTANTIATE_TEST_SUITE_P(
    Derived, ChooseGammaTest,
    testing::Values(
        ChooseCase{"ZeroTakesTheHighestOccupiedLevel", 0.0, 8, FromRows({{0, 0}, {6, 1}}), 1.5},
        ChooseCase{"QuarterPassesOnePixel", 0.25, 8, FromRows({{8, 7}, {6, 1}}), 1.75},
        ChooseCase{"HalfPassesTwoPixels", 0.5, 8, FromRows({{8, 7}, {6, 1}}), 1.5},
        ChooseCase{"CountIsRoundedDown", 0.249, 8, FromRows({{8, 7}, {6, 1}}), 2.0},
        ChooseCase{"AlmostOnePassesThreePixels", 0.99, 8, FromRows({{8, 7}, {6, 1}}), 1.0},
        ChooseCase{"HalfOfTheRangeGivesOne", 0.0, 8, Flat(2, 2, 4), 1.0},
        ChooseCase{"BelowHalfOfTheRangeGivesOne", 0.0, 8, Flat(2, 2, 3), 1.0},
        ChooseCase{"BlackFrameGivesOne", 0.0, 8, Flat(2, 2, 0), 1.0},
        ChooseCase{"BlackPixelsDoNotCount", 0.5, 8, FromRows({{8, 0}, {0, 0}}), 1.0},
        ChooseCase{"AboveTheRangeCountsAsItsTop", 0.0, 8, FromRows({{100, 1}}), 2.0},
        ChooseCase{"NegativeGivesTwo", -0.5, 8, FromRows({{6, 5}, {4, 1}}), 2.0},
        ChooseCase{"NegativeCountThatTruncatesToZeroCountsAsZero", -0.1, 8, FromRows({{6, 5}, {4, 1}}), 1.5},
        ChooseCase{"NotANumberCountsAsNegative", kNotANumber, 8, Flat(2, 2, 5), 2.0},
        // (5 - 4) / 2.5 = 0.4
        ChooseCase{"OddRangeIsHalvedExactly", 0.0, 5, Flat(1, 1, 4), 1.6},
        ChooseCase{"RangeOfOne", 0.0, 1, Flat(1, 1, 1), 2.0},
        ChooseCase{"EmptyFrameGivesOne", 0.5, 8, Frame(0, 0), 1.0},
        // (-8 - 0) / -4 = 2, limited to 1
        ChooseCase{"NegativeRangeGivesOne", 0.5, -8, Flat(2, 2, 5), 1.0},
        ChooseCase{"NegativeRangeAndRatioGiveOne", -0.5, -8, Flat(2, 2, 5), 1.0},
        ChooseCase{"LargestRangeIsNeverReached", 0.0, kLargestRange, Flat(2, 2, 65535), 1.0},
        ChooseCase{"LargestRangeWithANegativeRatio", -0.5, kLargestRange, Flat(2, 2, 65535), 2.0}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(ChooseGamma, RangeOfZeroGivesNoNumber) {
    const Frame frame = Flat(2, 2, 5);
    EXPECT_TRUE(std::isnan(ChooseGamma(frame.Data(), 2, 2, 0, 0.5)));
}

}  // namespace
}  // namespace vastrelline
