// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "EachFunction.h"
#include "MadeArguments.h"
#include "elementary/SineCosine.h"

namespace vastrelline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kHalfTurn = 0x1.921fb54442d18p+1;  // the nearest, a little below

struct AngleCase {
    const char* name;
    double angle;
    double result;
};

class SinTest : public testing::TestWithParam<AngleCase> {};
class CosTest : public testing::TestWithParam<AngleCase> {};

TEST_P(SinTest, GivesTheseBits) { EXPECT_EQ(BitsOf(Sin(GetParam().angle)), BitsOf(GetParam().result)); }

TEST_P(CosTest, GivesTheseBits) { EXPECT_EQ(BitsOf(Cos(GetParam().angle)), BitsOf(GetParam().result)); }

INSTANTIATE_TEST_SUITE_P(Special, SinTest,
                         testing::Values(AngleCase{"Zero", 0.0, 0.0}, AngleCase{"NegativeZero", -0.0, -0.0},
                                         AngleCase{"Infinity", kInfinity, kNan},
                                         AngleCase{"NegativeInfinity", -kInfinity, kNan},
                                         AngleCase{"NotANumber", kNan, kNan},
                                         AngleCase{"NegativeNotANumber", -kNan, kNan},
                                         AngleCase{"SmallestSubnormal", -0x1p-1074, -0x1p-1074},
                                         AngleCase{"SmallestNormal", 0x1p-1022, 0x1p-1022}),
                         [](const auto& test) { return test.param.name; });

// The sine of x is x - x^3/6 here, and the next term tips what would be a tie without it: of 21 * 2^-24 the
// cube takes 1543 and a half last places.
INSTANTIATE_TEST_SUITE_P(Small, SinTest,
                         testing::Values(AngleCase{"LessThanHalfAPlace", 0x1p-26, 0x1p-26},
                                         AngleCase{"MoreThanHalfAPlace", 0x1.8p-26, 0x1.7ffffffffffffp-26},
                                         AngleCase{"JustAboveATie", 21 * 0x1p-24, 0x1.4fffffffff9f9p-20}),
                         [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(Turns, SinTest,
                         testing::Values(AngleCase{"QuarterTurn", kHalfTurn / 2, 1.0},
                                         AngleCase{"HalfTurn", kHalfTurn, 1.2246467991473532e-16},
                                         AngleCase{"WholeTurn", 2 * kHalfTurn, -2 * 1.2246467991473532e-16},
                                         AngleCase{"TenTo22", 1e22, -0.8522008497671888},
                                         AngleCase{"Largest", kLargest, 0.004961954789184062}),
                         [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(Special, CosTest,
                         testing::Values(AngleCase{"Zero", 0.0, 1.0}, AngleCase{"NegativeZero", -0.0, 1.0},
                                         AngleCase{"Infinity", kInfinity, kNan},
                                         AngleCase{"NegativeInfinity", -kInfinity, kNan},
                                         AngleCase{"NotANumber", kNan, kNan},
                                         AngleCase{"NegativeNotANumber", -kNan, kNan},
                                         AngleCase{"SmallestSubnormal", 0x1p-1074, 1.0}),
                         [](const auto& test) { return test.param.name; });

// 1 - x^2/2: a quarter of a last place, and nine eighths of a half.
INSTANTIATE_TEST_SUITE_P(Small, CosTest,
                         testing::Values(AngleCase{"LessThanHalfAPlace", 0x1p-27, 1.0},
                                         AngleCase{"MoreThanHalfAPlace", 0x1.8p-27, 1.0 - 0x1p-53}),
                         [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(Turns, CosTest,
                         testing::Values(AngleCase{"QuarterTurn", kHalfTurn / 2, 6.123233995736766e-17},
                                         AngleCase{"HalfTurn", kHalfTurn, -1.0},
                                         AngleCase{"WholeTurn", 2 * kHalfTurn, 1.0},
                                         AngleCase{"TenTo22", 1e22, 0.52321478539513895},
                                         AngleCase{"Largest", kLargest, -0.9999876894265599}),
                         [](const auto& test) { return test.param.name; });

TEST(Sin, IsOdd) {
    for (const Arguments& made : MakeArguments(Elementary::Sin, kFewArguments)) {
        if (!std::isfinite(made.x)) continue;
        ASSERT_EQ(BitsOf(Sin(-made.x)), BitsOf(-Sin(made.x))) << made.x;
    }
}

TEST(Cos, IsEven) {
    for (const Arguments& made : MakeArguments(Elementary::Cos, kFewArguments))
        ASSERT_EQ(BitsOf(Cos(-made.x)), BitsOf(Cos(made.x))) << made.x;
}

}  // namespace
}  // namespace vastrelline
