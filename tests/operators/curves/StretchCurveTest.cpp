// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "operators/curves/StretchCurve.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kMin32 = std::numeric_limits<int32_t>::min();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct StretchCurveCase {
    const char* name;
    int32_t minLevel;
    int32_t maxLevel;
    StretchShape shape;
    std::vector<int32_t> table;
};

class StretchCurveTest : public testing::TestWithParam<StretchCurveCase> {};

TEST_P(StretchCurveTest, HasTheseEntries) {
    const StretchCurveCase& c = GetParam();
    EXPECT_EQ(BuildStretchCurve(c.minLevel, c.maxLevel, static_cast<int32_t>(c.table.size()) - 1, c.shape),
              c.table);
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, StretchCurveTest,
    testing::Values(
        // Dark tail 4 / (1 + e^(5 - i)) over 1..4: 0.07, 0.19, 0.48, 1.08; its top 1 is raised to 2, the rest
        // with it. Ramp 2i - 6 up to 12. Bright tail 2 / (1 + e^-d) + 11 over d = 0..3: 12 to 12.9.
        StretchCurveCase{"LowDarkTailIsRaised",
                         1,
                         12,
                         {4, 9, 4.0, 4.0, 2, 10, 2},
                         {1, 1, 1, 1, 2, 4, 6, 8, 10, 12, 12, 12, 12, 12, 12, 12}},
        // Without output levels for the tails they keep their own heights: the dark one ends at 1, the ramp
        // 2i - 7 at 11, the bright one is 4 / (1 + e^-d) + 9 and so reaches from 11 to 12.8.
        StretchCurveCase{"TailsWithoutLengthKeepTheirHeight",
                         1,
                         12,
                         {4, 9, 4.0, 4.0, 0, 10, 0},
                         {0, 0, 0, 0, 1, 3, 5, 7, 9, 11, 11, 12, 12, 12, 12, 12}},
        // rightLen alone 0: the top is the table's, 15, not 2 + 20. Ramp 20(i - 4)/11 + 2.
        StretchCurveCase{"RightAtTheTopEndsAtTheTable",
                         1,
                         15,
                         {4, 15, 4.0, 4.0, 2, 20, 0},
                         {1, 1, 1, 1, 2, 3, 5, 7, 9, 11, 12, 14, 16, 18, 20, 15}},
        // leftLen alone 0: 15 and not 20 + 3; above the frame 19 + 2, not clamped. Ramp 20i / 9.
        StretchCurveCase{"LeftAtZeroEndsAtTheTable",
                         0,
                         12,
                         {0, 9, 4.0, 4.0, 0, 20, 3},
                         {0, 2, 4, 6, 8, 11, 13, 15, 17, 15, 15, 15, 15, 21, 21, 21}},
        // Slope 1: 5 - 2, 6 - 2 ... up to 7.
        StretchCurveCase{"NoRampLengthIsSlopeOne",
                         1,
                         12,
                         {4, 9, 4.0, 4.0, 2, 0, 2},
                         {1, 1, 1, 1, 2, 3, 4, 5, 6, 7, 7, 7, 7, 7, 7, 7}},
        // left 0 has one level: 1 / (1 + e^4) is 0. Ramp 9i / 8 up to 9. With one length 0 the bright tail
        // ends at the table's top, 8, and not at the sum of the lengths.
        StretchCurveCase{
            "EndsOfTheRangeAsBounds", 0, 8, {0, 8, 4.0, 4.0, 0, 9, 0}, {0, 1, 2, 3, 4, 5, 6, 7, 8}},
        // One level and right at left: the slope is infinite. Up to 3 as ever: 3 / (1 + e^(4(4 - i) / 3)) is
        // 0.05, 0.19 and 0.63, raised by 2. Then no integer, clamped to 0. Above the frame the sum wraps and
        // is not clamped: the tail's height over its own start is 3 - 2.
        StretchCurveCase{"RightAtLeftIsBlackAboveIt",
                         1,
                         7,
                         {3, 3, 4.0, 4.0, 2, 4, 4},
                         {2, 2, 2, 2, 0, 0, 0, 0, kMin32 + 1, kMin32 + 1}},
        // No level is at left -1 or below: ramp i + 3 from level 0 on, up to 7.
        StretchCurveCase{"LeftBelowTheTable", 0, 5, {-1, 4, 4.0, 4.0, 2, 5, 3}, {3, 4, 5, 6, 7, 7, 7}},
        // right -1: the slope is 6 / -3, the ramp's end 2 + 5, and the bright tail begins above left with
        // 3 / (1 + e^(-4d / 6)) + 6 at d = 4: 8.8.
        StretchCurveCase{"RightBelowTheTable", 0, 4, {2, -1, 4.0, 4.0, 1, 6, 3}, {1, 1, 1, 8, 8, 8}},
        // Weight 0 is flat: the dark tail half of 4 levels everywhere, +0.5 truncated; so is the bright one.
        StretchCurveCase{"WeightZeroIsFlat", 0, 9, {3, 6, 0.0, 0.0, 2, 3, 2}, {2, 2, 2, 2, 3, 4, 5, 5, 5, 5}},
        // Weights that are no number: no integer in either tail. The dark one is INT_MIN raised by 2 -
        // INT_MIN, which wraps to 2; the bright one is clamped to 0, and not clamped above the frame.
        StretchCurveCase{"WeightsThatAreNoNumber",
                         0,
                         8,
                         {3, 6, kNan, kNan, 2, 3, 2},
                         {2, 2, 2, 2, 3, 4, 0, 0, 0, kMin32 + 4}},
        // An infinite weight is a step: 0 below left's top, all of the tail above right.
        StretchCurveCase{
            "HugeWeightsAreSteps", 0, 9, {3, 6, 1e308, 1e308, 2, 3, 2}, {2, 2, 2, 2, 3, 4, 5, 6, 6, 6}}),
    [](const auto& test) { return std::string(test.param.name); });

// Dark tail 40 / (1 + e^((40 - i) / 10)), ending at 19.0, in 10 levels: times 10 / 19, to the nearest. Ramp
// 2i - 68 from 10 to 52. Bright tail 10 / (1 + e^(-d / 10)) + 47 over d = 0..39.
TEST(StretchCurve, LongTailsAreScaledToTheirLengths) {
    const std::vector<int32_t> table = BuildStretchCurve(0, 99, 127, {39, 60, 4.0, 4.0, 10, 42, 10});
    ASSERT_EQ(table.size(), 128U);
    for (const auto& [level, entry] :
         std::vector<std::pair<size_t, int32_t>>{{0, 0},   // 0.72 * 10 / 19 = 0.38
                                                 {10, 1},  // 1.90 * 10 / 19 = 1.00
                                                 {20, 3},  // 4.77 * 10 / 19 = 2.51
                                                 {30, 6},  // 10.76 * 10 / 19 = 5.66
                                                 {39, 10},
                                                 {40, 12},
                                                 {50, 32},
                                                 {59, 50},
                                                 {60, 52},
                                                 {70, 54},  // 7.31
                                                 {80, 55},  // 8.81
                                                 {90, 56},  // 9.53
                                                 {99, 56},  // 9.80
                                                 {100, 56},
                                                 {127, 56}})
        EXPECT_EQ(table[level], entry) << level;
}

// left far below the darkest pixel inverts the dark tail: -99 / (1 + e^(-4 / 99)) is -50.5, where the ramp
// i - 50 begins; the tail's value at the darkest pixel is -99 / (1 + e^4) = -1.8.
TEST(StretchCurve, LeftBelowTheFrameGoesBelowZero) {
    const std::vector<int32_t> table = BuildStretchCurve(100, 120, 127, {0, 110, 4.0, 4.0, 0, 110, 17});
    for (const auto& [level, entry] : std::vector<std::pair<size_t, int32_t>>{
             {0, -1}, {1, -49}, {100, 50}, {109, 59}, {110, 60}, {115, 64}, {120, 65}, {127, 65}})
        EXPECT_EQ(table[level], entry) << level;
}

TEST(StretchCurve, FrameGivesItsLowestAndHighestLevel) {
    const Frame frame = FromRows({{5, 12}, {1, 7}});
    EXPECT_EQ(BuildStretchCurve(frame.Data(), 2, 2, 15, 4, 9, 4.0, 3.0, 2, 10, 2),
              BuildStretchCurve(1, 12, 15, {4, 9, 4.0, 3.0, 2, 10, 2}));
}

// Whatever the keys, there is an entry for each level, and those of the frame's tails keep their limits.
TEST(StretchCurve, HostileShapesStayWithinTheTailsLimits) {
    constexpr int32_t kMax32 = std::numeric_limits<int32_t>::max();
    for (const double weight : {4.0, 0.0, -3.5, 1e308, -1e308, 1e-308, kNan, kInfinity, -kInfinity})
        for (const int32_t leftLen : {0, 7, -7, kMax32, kMin32})
            for (const int32_t rightLen : {0, 7, -7, kMax32, kMin32})
                for (const int32_t midLen : {0, 32, kMax32, kMin32}) {
                    SCOPED_TRACE(testing::Message()
                                 << weight << ' ' << leftLen << ' ' << midLen << ' ' << rightLen);
                    const std::vector<int32_t> table =
                        BuildStretchCurve(2, 29, 31, {9, 22, weight, weight, leftLen, midLen, rightLen});
                    ASSERT_EQ(table.size(), 32U);
                    for (size_t level = 2; level <= 9; ++level) EXPECT_GE(table[level], 0);
                    for (size_t level = 22; level <= 29; ++level) EXPECT_GE(table[level], 0);
                    if (leftLen > 0) {
                        EXPECT_LE(table[9], leftLen);
                    }
                    EXPECT_EQ(table[31], table[30]);
                    EXPECT_EQ(table[0], table[1]);
                }
}

}  // namespace
}  // namespace vastrelline
