// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "operators/histogram/OtsuThreshold.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

struct OtsuCase {
    const char* name;
    Frame frame;
    int32_t maxValue;
    int32_t threshold;
};

class ComputeOtsuThresholdTest : public testing::TestWithParam<OtsuCase> {};

TEST_P(ComputeOtsuThresholdTest, IsTheLowestLevelOfTheGreatestVariance) {
    const Frame& frame = GetParam().frame;
    EXPECT_EQ(ComputeOtsuThreshold(frame.Data(), frame.width, frame.height, GetParam().maxValue),
              GetParam().threshold);
}

// Between two occupied levels the variance does not change: the lower of them is its first place.
INSTANTIATE_TEST_SUITE_P(
    Levels, ComputeOtsuThresholdTest,
    testing::Values(
        OtsuCase{"TwoLevels", FromRows({{10, 20}, {20, 10}}), 31, 10},
        OtsuCase{"TwoLevelsOfUnequalCounts", FromRows({{10, 20}, {20, 20}}), 31, 10},
        OtsuCase{"TwoLevelsAtTheEnds", FromRows({{0, 31}}), 31, 0},
        // At 2: 1/2 * 1/2 * (2 - 17)^2 = 56; at 4: 3/4 * 1/4 * (8/3 - 30)^2 = 140
        OtsuCase{"SecondOfThreeLevels", FromRows({{2, 2, 2, 2}, {4, 4, 30, 30}}), 31, 4},
        // At 2: 1/2 * 1/2 * (2 - 29)^2 = 182; at 28: 3/4 * 1/4 * (32/3 - 30)^2 = 70
        OtsuCase{"FirstOfThreeLevels", FromRows({{2, 2, 2, 2}, {28, 28, 30, 30}}), 31, 2},
        // At 4: 1/4 * 3/4 * (4 - 20)^2; at 16: 3/4 * 1/4 * (12 - 28)^2: both are 48, without any rounding.
        OtsuCase{"OfAnExactTieTheLowerLevel", FromRows({{28, 16}, {16, 4}}), 31, 4},
        OtsuCase{"OneLevel", Flat(5, 3, 7), 31, 0}, OtsuCase{"BlackFrame", Flat(5, 3, 0), 31, 0},
        OtsuCase{"TopLevelAlone", Flat(5, 3, 31), 31, 0}, OtsuCase{"OnePixel", Flat(1, 1, 9), 31, 0},
        OtsuCase{"PixelsAboveTheTopCountAsTheTop", FromRows({{3, 3, 65535, 40}}), 31, 3},
        // Clamped to 31 there is one level only.
        OtsuCase{"AllPixelsAboveTheTop", FromRows({{32, 65535}}), 31, 0},
        OtsuCase{"SixteenBits", FromRows({{60000, 65535}}), 65535, 60000},
        OtsuCase{"TableOfOneLevel", FromRows({{0, 9}}), 0, 0},
        OtsuCase{"NegativeTop", FromRows({{0, 9}}), -1, 0}, OtsuCase{"EmptyFrame", Frame(0, 0), 31, 0},
        OtsuCase{"NoColumns", Frame(0, 4), 31, 0}),
    [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace vastrelline
