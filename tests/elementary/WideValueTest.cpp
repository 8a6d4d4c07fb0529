// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "elementary/WideValue.h"

namespace vastrelline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();

WideNumber Bit(int place) { return WideNumber(1).Shifted(place); }

struct RoundingCase {
    const char* name;
    WideValue value;
    double nearest;
};

class RoundToDoubleTest : public testing::TestWithParam<RoundingCase> {};

TEST_P(RoundToDoubleTest, GivesTheNearest) {
    const RoundingCase& c = GetParam();
    EXPECT_EQ(RoundToDouble(c.value), c.nearest);
    WideValue negated = c.value;
    negated.isNegative = true;
    EXPECT_EQ(RoundToDouble(negated), -c.nearest);
    EXPECT_TRUE(std::signbit(RoundToDouble(negated)));
}

const uint64_t kTwo53 = uint64_t{1} << 53;

INSTANTIATE_TEST_SUITE_P(
    Values, RoundToDoubleTest,
    testing::Values(
        RoundingCase{"Zero", {WideNumber(), 0, false}, 0}, RoundingCase{"One", {WideNumber(1), 0, false}, 1},
        RoundingCase{"ByTheExponent", {WideNumber(3), 100, false}, 3 * 0x1p100},
        RoundingCase{"ByTheFraction", {WideNumber(3).Shifted(-100), 0, false}, 3 * 0x1p-100},
        RoundingCase{"TieDownToEven", {WideNumber(kTwo53 + 1), 0, false}, 0x1p53},
        RoundingCase{"TieUpToEven", {WideNumber(kTwo53 + 3), 0, false}, 0x1p53 + 4},
        RoundingCase{"ALittleAboveATie", {WideNumber(kTwo53 + 1) + Bit(-120), 0, false}, 0x1p53 + 2},
        RoundingCase{"ALittleBelowATie", {WideNumber(kTwo53 + 3) - Bit(-120), 0, false}, 0x1p53 + 2},
        RoundingCase{"ATieButForLostBits", {WideNumber(kTwo53 + 1) - Bit(-150), 0, false}, 0x1p53},
        RoundingCase{"ATieButForAddedBits", {WideNumber(kTwo53 + 1) + Bit(-150), 0, false}, 0x1p53},
        RoundingCase{"CarryToTheNextPower", {WideNumber(2 * kTwo53 - 1), 0, false}, 0x1p54},
        RoundingCase{"CarryOfAllBits", {WideNumber(1) - Bit(-320), 0, false}, 1},
        RoundingCase{"Largest", {WideNumber(kTwo53 - 1), 971, false}, kLargest},
        RoundingCase{"JustBelowInfinity", {WideNumber(2 * kTwo53 - 1) - Bit(-100), 970, false}, kLargest},
        RoundingCase{"FirstInfinity", {WideNumber(2 * kTwo53 - 1), 970, false}, kInfinity},
        RoundingCase{"FarBeyond", {WideNumber(1), 100000, false}, kInfinity},
        RoundingCase{"SmallestNormal", {WideNumber(1), -1022, false}, 0x1p-1022},
        RoundingCase{"RoundedToSmallestNormal", {WideNumber(kTwo53 - 1), -1075, false}, 0x1p-1022},
        RoundingCase{"LargestSubnormal", {WideNumber(kTwo53 / 2 - 1), -1074, false}, 0x1p-1022 - 0x1p-1074},
        // 1.5 last places, and 2.5: both to 2.
        RoundingCase{"SubnormalTieUp", {WideNumber(3), -1075, false}, 0x1p-1073},
        RoundingCase{"SubnormalTieDown", {WideNumber(5), -1075, false}, 0x1p-1073},
        RoundingCase{"Smallest", {WideNumber(1), -1074, false}, 0x1p-1074},
        RoundingCase{"HalfTheSmallest", {WideNumber(1), -1075, false}, 0},
        RoundingCase{"MoreThanHalfTheSmallest", {WideNumber(1) + Bit(-100), -1075, false}, 0x1p-1074},
        RoundingCase{"FarBelow", {WideNumber(1), -100000, false}, 0}),
    [](const auto& test) { return test.param.name; });

TEST(RoundToFloat, RoundsOnce) {
    constexpr uint64_t kTwo24 = uint64_t{1} << 24;
    EXPECT_EQ(RoundToFloat({WideNumber(kTwo24 + 1), 0, false}), 0x1p24F);
    EXPECT_EQ(RoundToFloat({WideNumber(kTwo24 + 3), 0, false}), 0x1p24F + 4);
    // By way of a double it would be the tie.
    EXPECT_EQ(RoundToFloat({WideNumber(kTwo24 + 1) + Bit(-60), 0, false}), 0x1p24F + 2);
    EXPECT_EQ(RoundToFloat({WideNumber(kTwo24 - 1), 104, false}), std::numeric_limits<float>::max());
    EXPECT_EQ(RoundToFloat({WideNumber(2 * kTwo24 - 1), 103, true}), -std::numeric_limits<float>::infinity());
    EXPECT_EQ(RoundToFloat({WideNumber(3), -150, false}), 0x1p-148F);
    EXPECT_EQ(RoundToFloat({WideNumber(1), -150, false}), 0.0F);
    EXPECT_TRUE(std::signbit(RoundToFloat({WideNumber(), 0, true})));
}

TEST(SplitDouble, GivesWholeNumberAndExponent) {
    const auto split = [](double x) {
        return std::tuple(SplitDouble(x).magnitude, SplitDouble(x).exponent, SplitDouble(x).isNegative);
    };
    EXPECT_EQ(split(1.0), std::tuple(kTwo53 / 2, -52, false));
    EXPECT_EQ(split(-3.0), std::tuple(3 * (kTwo53 / 4), -51, true));
    EXPECT_EQ(split(0x1p-1022), std::tuple(kTwo53 / 2, -1074, false));
    EXPECT_EQ(split(0x1p-1074), std::tuple(uint64_t{1}, -1074, false));
    EXPECT_EQ(split(kLargest), std::tuple(kTwo53 - 1, 971, false));
    EXPECT_EQ(split(-0.0), std::tuple(uint64_t{0}, -1074, true));
}

}  // namespace
}  // namespace vastrelline
