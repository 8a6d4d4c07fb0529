// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "stages/sigmoid/SigmoidCurve.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kLimitBin = 10;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

// Levels 0, 10, 20 and 30, each 11 times: one more than the limit. A table of this size is not smoothed.
const Frame kFourLevels = Ramp(4, 11, 0, 10, 0);

// The same with 30 only 10 times, which is not above the limit.
Frame WithScarceTop() {
    Frame frame = kFourLevels;
    frame.At(3, 10) = 40;
    return frame;
}

std::vector<uint16_t> Curve(const Frame& frame, int32_t outputRange, double ratio, int32_t maxValue = 40) {
    return BuildSigmoidCurve(frame.Data(), frame.width, frame.height, maxValue, outputRange, ratio,
                             kLimitBin);
}

std::vector<uint16_t> At(const std::vector<uint16_t>& table, const std::vector<size_t>& levels) {
    std::vector<uint16_t> entries;
    for (const size_t level : levels) entries.push_back(table.at(level));
    return entries;
}

struct CentreCase {
    const char* name;
    double ratio;
    std::vector<uint16_t> entries;  // at levels 0, 5, 10, 20, 30 and 40, for an output of 1000
};

class SigmoidCentreTest : public testing::TestWithParam<CentreCase> {};

TEST_P(SigmoidCentreTest, CurveOfFourLevels) {
    EXPECT_EQ(At(Curve(kFourLevels, 1000, GetParam().ratio), {0, 5, 10, 20, 30, 40}), GetParam().entries);
}

// S(i) = 2500 / (1 + exp(-4 (i - c) / w)), truncated, then (S(i) - S(0)) * 1000 / (S(30) - S(0)). S(30) is
// 2201 in all cases with a width.
INSTANTIATE_TEST_SUITE_P(Ratios, SigmoidCentreTest,
                         testing::Values(
                             // c 15, w 30: S is 298, 521, 848, 1651, 2201.
                             CentreCase{"ZeroIsTheMiddle", 0.0, {0, 117, 289, 710, 1000, 1000}},
                             CentreCase{"NegativeZeroIsZero", -0.0, {0, 117, 289, 710, 1000, 1000}},
                             // 13 of 44 pixels: level 10 passes them. c 10, w 40: S is 672, 943, 1250, 1827.
                             CentreCase{"FractionOfThePixels", 0.3, {0, 177, 378, 755, 1000, 1000}},
                             // 11 pixels are reached by level 0, but passed by level 10 only.
                             CentreCase{"CountMustBePassed", 0.25, {0, 177, 378, 755, 1000, 1000}},
                             // c 20, w 20: S is 44, 118, 298, 1250.
                             CentreCase{"Half", 0.5, {0, 34, 117, 559, 1000, 1000}},
                             // c 30, w 0: S is 0 up to 29 and no number at 30.
                             CentreCase{"CentreAtTheHighEndHasNoWidth", 0.8, {0, 0, 0, 0, 0, 0}},
                             // All 44 pixels are never passed: c 0, w 60: S is 1250, 1456, 1651, 1978.
                             CentreCase{"AllPixelsLeaveTheCentreAtZero", 1.0, {0, 216, 421, 765, 1000, 1000}},
                             CentreCase{"Negative", -1.0, {0, 216, 421, 765, 1000, 1000}},
                             // No count of 32 bits stands for these, so that the smallest one does.
                             CentreCase{"Huge", 1e308, {0, 216, 421, 765, 1000, 1000}},
                             CentreCase{"NotANumber", kNotANumber, {0, 216, 421, 765, 1000, 1000}}),
                         [](const auto& test) { return test.param.name; });

// High is 20 and the centre 30: w -20. S is 2493 at 0, 2455 at 10, 2201 at 20; the curve falls from 2493 and
// is stretched to rise over the same levels.
TEST(SigmoidCurve, CentreBeyondTheHighEndTurnsTheCurve) {
    EXPECT_EQ(At(Curve(WithScarceTop(), 1000, 0.9), {0, 10, 20, 30}),
              (std::vector<uint16_t>{0, 130, 1000, 1000}));
}

// Level 30 would move the high end from 20 to 30. S is 298, 1250 and 2201 at 0, 10 and 20.
TEST(SigmoidCurve, CountAtTheLimitIsNotOccupied) {
    EXPECT_EQ(At(Curve(WithScarceTop(), 1000, 0.0), {0, 10, 20, 30}),
              (std::vector<uint16_t>{0, 500, 1000, 1000}));
}

// 1000 pixels make an average of 19 over 51 levels. The low end is taken at 400, so that the frame's only
// level is the high end. S runs from 666 to 4928 over 5595.
TEST(SigmoidCurve, OneLevelStandsAtTheTopOfItsCurve) {
    const std::vector<uint16_t> table = Curve(Flat(40, 25, 500), 4095, 0.0, 4095);
    EXPECT_EQ(At(table, {0, 400, 401, 450, 499, 500, 4095}),
              (std::vector<uint16_t>{0, 0, 23, 2047, 4071, 4095, 4095}));
}

TEST(SigmoidCurve, WithoutAWidthAllLevelsBecomeZero) {
    // Only level 0 is occupied; nothing is; and there is no pixel at all.
    EXPECT_EQ(Curve(Flat(40, 25, 0), 4095, 0.0, 4095), std::vector<uint16_t>(4096, 0));
    EXPECT_EQ(Curve(Flat(2, 2, 700), 4095, 0.0, 4095), std::vector<uint16_t>(4096, 0));
    EXPECT_EQ(Curve(Frame(0, 3), 4095, 0.5, 4095), std::vector<uint16_t>(4096, 0));
    EXPECT_EQ(Curve(Flat(1, 1, 0), 4095, 0.5, 0), std::vector<uint16_t>(1, 0));
    // A fraction puts the centre on the only level, which is the high end.
    EXPECT_EQ(Curve(Flat(40, 25, 500), 4095, 0.5, 4095), std::vector<uint16_t>(4096, 0));
}

// 500 pixels at 3000 are 9 in the average over 51 levels, 1000 at 700 and 1500 are 19. The curve runs from
// 600 to 1500: S is 666, 975 at 700, 2797 at 1050, 4928.
TEST(SigmoidCurve, NarrowSpikeDoesNotCount) {
    Frame frame(50, 50);
    std::fill_n(frame.pixels.begin(), 1000, uint16_t{700});
    std::fill_n(frame.pixels.begin() + 1000, 1000, uint16_t{1500});
    std::fill_n(frame.pixels.begin() + 2000, 500, uint16_t{3000});
    EXPECT_EQ(At(Curve(frame, 4095, 0.0, 4095), {600, 700, 1050, 1500, 3000}),
              (std::vector<uint16_t>{0, 296, 2047, 4095, 4095}));
}

TEST(SigmoidCurve, RisesWithTheLevelAndKeepsToItsEnds) {
    const Frame frame = Noise(64, 48, 4095, 3);
    for (const double ratio : {0.0, 0.2, 0.5, 0.9}) {
        const std::vector<uint16_t> table =
            BuildSigmoidCurve(frame.Data(), 64, 48, 4095, 3000, ratio, 0);  // a limit that noise passes
        EXPECT_TRUE(std::is_sorted(table.begin(), table.end())) << ratio;
        EXPECT_EQ(table.front(), 0) << ratio;
        EXPECT_EQ(table.back(), 3000) << ratio;
    }
}

struct OutputCase {
    const char* name;
    int32_t outputRange;
    std::vector<uint16_t> entries;  // at levels 0, 10, 20 and 30, centred in the middle
};

class SigmoidOutputTest : public testing::TestWithParam<OutputCase> {};

TEST_P(SigmoidOutputTest, KeepsTheLowBits) {
    EXPECT_EQ(At(Curve(kFourLevels, GetParam().outputRange, 0.0), {0, 10, 20, 30}), GetParam().entries);
}

INSTANTIATE_TEST_SUITE_P(
    Ranges, SigmoidOutputTest,
    testing::Values(OutputCase{"Zero", 0, {0, 0, 0, 0}},
                    // S is 7990, 22741, 44293 and 59044 of 67035.
                    OutputCase{"SixteenBits", 65535, {0, 18934, 46600, 65535}},
                    // -1 * {0, 0.2..., 0.7..., 1}
                    OutputCase{"MinusOne", -1, {0, 0, 0, 65535}},
                    // No headroom is left above: S is 0 everywhere, and 0 / 0 is 0.
                    OutputCase{"TakesUpTheHeadroom", -1500, {0, 0, 0, 0}},
                    // The top is 101500 and S 12099, 34433, 67066 and 89400, of which 12099, 34433, 1530 and
                    // 23864 are kept: (1530 - 12099) / (89400 - 12099) of 100000 is -13672, kept as 51864.
                    OutputCase{"SeventeenBits", 100000, {0, 28892, 51864, 15219}}),
    [](const auto& test) { return test.param.name; });

TEST(SigmoidCurve, EveryOutputRangeAndRatioGivesAWholeTable) {
    const Frame frame = Noise(9, 7, 40, 4);
    for (const int32_t outputRange : {INT_MIN, INT_MIN + 1, -1501, 1, INT_MAX - 1500, INT_MAX})
        for (const double ratio : {0.0, 0.5, -0.5, 1e-300, 1e308, -1e308, kInfinity, -kInfinity, kNotANumber})
            EXPECT_EQ(BuildSigmoidCurve(frame.Data(), 9, 7, 40, outputRange, ratio, 0).size(), 41U)
                << outputRange << ' ' << ratio;
}

}  // namespace
}  // namespace vastrelline
