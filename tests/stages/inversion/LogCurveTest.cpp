// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "stages/inversion/LogCurve.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

Frame Apply(Frame frame, double ratio, int32_t inverse) {
    ApplyLogTable(frame.Data(), frame.width, frame.height,
                  BuildLogCurve(frame.Data(), frame.width, frame.height, ratio, inverse));
    return frame;
}

struct LogCurveCase {
    const char* name;
    double ratio;
    std::vector<uint16_t> rising;   // of levels 10..14
    std::vector<uint16_t> inverse;  // of the same levels
};

class LogCurveTest : public testing::TestWithParam<LogCurveCase> {};

TEST_P(LogCurveTest, EveryLevelTakesItsEntry) {
    const Frame frame = FromRows({{10, 11, 12, 13, 14}});
    EXPECT_THAT(Apply(frame, GetParam().ratio, 0), EqualsFrame(Frame(5, 1, GetParam().rising)));
    EXPECT_THAT(Apply(frame, GetParam().ratio, 1), EqualsFrame(Frame(5, 1, GetParam().inverse)));
}

// The span is 5 levels.
// k = 0: 5 * log(i) / log(5) is 0, 0, 2.153, 3.413, 4.307.
// k = 2: 5 * log((i + 2) / 2) / log(7 / 2) is 0, 1.618, 2.766, 3.657, 4.385.
// k = 5000: 5 * log(1 + i / 5000) / log(1.001) is a little more than i, so an inverted entry falls below 5 -
// i.
INSTANTIATE_TEST_SUITE_P(
    Ratios, LogCurveTest,
    testing::Values(LogCurveCase{"Zero", 0.0, {10, 10, 12, 13, 14}, {15, 15, 12, 11, 10}},
                    LogCurveCase{"TooSmallForOneLevel", 0.199, {10, 10, 12, 13, 14}, {15, 15, 12, 11, 10}},
                    LogCurveCase{"Half", 0.5, {10, 11, 12, 13, 14}, {15, 13, 12, 11, 10}},
                    LogCurveCase{"NegativeHalfIsHalf", -0.5, {10, 11, 12, 13, 14}, {15, 13, 12, 11, 10}},
                    LogCurveCase{"LargeIsNearlyALine", 1000, {10, 11, 12, 13, 14}, {15, 13, 12, 11, 10}}),
    [](const auto& test) { return std::string(test.param.name); });

// Levels that the frame has none of count in the span all the same.
TEST(LogCurve, SpanReachesFromTheLowestLevelToTheHighest) {
    EXPECT_THAT(Apply(FromRows({{14, 10}, {12, 14}}), 0.5, 1), EqualsFrame(FromRows({{10, 15}, {12, 10}})));
}

TEST(LogCurve, LowestLevelCanRiseAboveTheHighest) {
    // Two levels and k = 0: 2 * log(1) / log(2) is 0, so both map to 2 + 4094.
    EXPECT_THAT(Apply(FromRows({{4094, 4095}}), 0.0, 1), EqualsFrame(FromRows({{4096, 4096}})));
}

TEST(LogCurve, OneLevelRisesByOneWhenInverse) {
    for (const double ratio : {0.0, 0.2, -0.2, 3.0}) {
        EXPECT_THAT(Apply(Flat(3, 2, 700), ratio, 1), EqualsFrame(Flat(3, 2, 701))) << ratio;
        EXPECT_THAT(Apply(Flat(3, 2, 700), ratio, 0), EqualsFrame(Flat(3, 2, 700))) << ratio;
    }
    EXPECT_THAT(Apply(Flat(1, 1, 0), 0.0, 1), EqualsFrame(Flat(1, 1, 1)));
}

// span + minLevel is 65536 here. At the top 65536 * (1 - log(78642 / 13107) / log(78643 / 13107)) is 0.5.
TEST(LogCurve, EntryKeepsItsLow16Bits) {
    EXPECT_THAT(Apply(FromRows({{0, 65535}}), 0.2, 1), EqualsFrame(FromRows({{0, 0}})));
    EXPECT_THAT(Apply(FromRows({{1, 65535}}), 0.2, 1), EqualsFrame(FromRows({{0, 1}})));
    EXPECT_THAT(Apply(Flat(1, 1, 65535), 0.0, 1), EqualsFrame(Flat(1, 1, 0)));
}

// A product that has no 32-bit integer is INT32_MIN, whose magnitude is itself; the logarithms of what
// follows are none, and 16 bits of the entry hold nothing.
TEST(LogCurve, RatioWithoutANumberMakesAllTheLowestLevel) {
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    for (const double ratio :
         {std::numeric_limits<double>::quiet_NaN(), kInfinite, -kInfinite, 1e308, 1e12}) {
        EXPECT_THAT(Apply(FromRows({{10, 12, 14}}), ratio, 1), EqualsFrame(Flat(3, 1, 10))) << ratio;
    }
}

TEST(LogCurve, FrameWithoutPixelsIsNoWork) {
    EXPECT_TRUE(BuildLogCurve(nullptr, 0, 0, 0.2, 1).table.empty());
    Frame frame(0, 0);
    EXPECT_THAT(Apply(frame, 0.2, 1), EqualsFrame(Frame(0, 0)));
}

TEST(LogCurve, LevelsOutsideTheTableTakeItsNearestEntry) {
    const LogCurve curve{10, {30, 40}};
    Frame frame = FromRows({{0, 9, 10, 11, 12, 65535}});
    ApplyLogTable(frame.Data(), 6, 1, curve);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{30, 30, 30, 40, 40, 40}})));
}

}  // namespace
}  // namespace vastrelline
