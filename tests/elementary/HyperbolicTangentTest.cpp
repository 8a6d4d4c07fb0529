// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "EachFunction.h"
#include "MadeArguments.h"
#include "elementary/HyperbolicTangent.h"

namespace vastrelline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

struct TanhCase {
    const char* name;
    double x;
    double result;
};

class TanhTest : public testing::TestWithParam<TanhCase> {};

TEST_P(TanhTest, GivesTheseBits) { EXPECT_EQ(BitsOf(Tanh(GetParam().x)), BitsOf(GetParam().result)); }

INSTANTIATE_TEST_SUITE_P(Special, TanhTest,
                         testing::Values(TanhCase{"Zero", 0.0, 0.0}, TanhCase{"NegativeZero", -0.0, -0.0},
                                         TanhCase{"Infinity", kInfinity, 1.0},
                                         TanhCase{"NegativeInfinity", -kInfinity, -1.0},
                                         TanhCase{"NotANumber", kNan, kNan},
                                         TanhCase{"NegativeNotANumber", -kNan, kNan},
                                         TanhCase{"SmallestSubnormal", 0x1p-1074, 0x1p-1074},
                                         TanhCase{"Largest", std::numeric_limits<double>::max(), 1.0},
                                         TanhCase{"Half", 0.5, 0.46211715726000975}),
                         [](const auto& test) { return test.param.name; });

// x - x^3/3 here, and the next term tips what would be a tie without it: of 9 * 2^-25 the cube takes 121 and
// a half last places.
INSTANTIATE_TEST_SUITE_P(Small, TanhTest,
                         testing::Values(TanhCase{"LessThanHalfAPlace", 0x1p-27, 0x1p-27},
                                         TanhCase{"JustAboveATie", 9 * 0x1p-25, 0x1.1ffffffffff87p-22}),
                         [](const auto& test) { return test.param.name; });

// 1 - 2 * e^(-2x): half a last place below 1 at x = 55 / 2 * log(2), between these two.
INSTANTIATE_TEST_SUITE_P(Large, TanhTest,
                         testing::Values(TanhCase{"LastBelowOne", 0x1.30fc1931f09c9p+4, 1.0 - 0x1p-53},
                                         TanhCase{"FirstOne", 0x1.30fc1931f09cap+4, 1.0}),
                         [](const auto& test) { return test.param.name; });

TEST(Tanh, IsOdd) {
    for (const Arguments& made : MakeArguments(Elementary::Tanh, kFewArguments)) {
        if (std::isnan(made.x)) continue;
        ASSERT_EQ(BitsOf(Tanh(-made.x)), BitsOf(-Tanh(made.x))) << made.x;
    }
}

}  // namespace
}  // namespace vastrelline
