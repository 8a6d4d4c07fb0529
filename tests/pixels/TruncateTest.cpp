// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "pixels/Truncate.h"

namespace vastrelline {
namespace {

constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct TruncateCase {
    const char* name;
    double value;
    int32_t expected;
};

class TruncateTest : public testing::TestWithParam<TruncateCase> {};

TEST_P(TruncateTest, GivesTheIntegerTowardZeroOrTheLowestOne) {
    EXPECT_EQ(TruncateToInt32(GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Edges, TruncateTest,
    testing::Values(
        TruncateCase{"Zero", 0.0, 0}, TruncateCase{"NegativeZero", -0.0, 0},
        TruncateCase{"JustBelowOne", 0.99999999, 0}, TruncateCase{"JustAboveMinusOne", -0.99999999, 0},
        TruncateCase{"HalfIsNotRoundedUp", 2.5, 2}, TruncateCase{"NegativeGoesTowardZero", -2.9, -2},
        TruncateCase{"Highest", 2147483647.0, kHighest},
        TruncateCase{"FractionAboveHighest", 2147483647.9, kHighest},
        TruncateCase{"OneAboveHighest", 2147483648.0, kLowest},
        TruncateCase{"Lowest", -2147483648.0, kLowest},
        TruncateCase{"FractionBelowLowest", -2147483648.9, kLowest},
        TruncateCase{"OneBelowLowest", -2147483649.0, kLowest},
        TruncateCase{"WithinUnsignedRange", 4294967295.0, kLowest}, TruncateCase{"Huge", 1e300, kLowest},
        TruncateCase{"HugeNegative", -1e300, kLowest}, TruncateCase{"Tiny", 5e-324, 0},
        TruncateCase{"Infinite", kInfinity, kLowest}, TruncateCase{"NegativeInfinite", -kInfinity, kLowest},
        TruncateCase{"NotANumber", std::numeric_limits<double>::quiet_NaN(), kLowest}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(Truncate, PixelKeepsTheLow16Bits) {
    EXPECT_EQ(LowBits16(0), 0);
    EXPECT_EQ(LowBits16(65535), 65535);
    EXPECT_EQ(LowBits16(65536), 0);
    EXPECT_EQ(LowBits16(0x12345678), 0x5678);
    EXPECT_EQ(LowBits16(-1), 65535);
    EXPECT_EQ(LowBits16(kLowest), 0);  // so what has no integer becomes black
}

TEST(Truncate, SumsWrapAroundAtBothEnds) {
    EXPECT_EQ(WrappingAdd(2, -5), -3);
    EXPECT_EQ(WrappingAdd(kHighest, 1), kLowest);
    EXPECT_EQ(WrappingAdd(kLowest, -1), kHighest);
    EXPECT_EQ(WrappingAdd(kLowest, kLowest), 0);
}

TEST(Truncate, DifferencesWrapAroundAtBothEnds) {
    EXPECT_EQ(WrappingSubtract(2, 5), -3);
    EXPECT_EQ(WrappingSubtract(kLowest, 1), kHighest);
    EXPECT_EQ(WrappingSubtract(kHighest, -1), kLowest);
    EXPECT_EQ(WrappingSubtract(0, kLowest), kLowest);
}

}  // namespace
}  // namespace vastrelline
