// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <limits>

#include "EachFunction.h"
#include "elementary/Exponential.h"

namespace vastrelline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

struct ExpCase {
    const char* name;
    double x;
    double result;
};

class ExpTest : public testing::TestWithParam<ExpCase> {};

TEST_P(ExpTest, GivesTheseBits) { EXPECT_EQ(BitsOf(Exp(GetParam().x)), BitsOf(GetParam().result)); }

INSTANTIATE_TEST_SUITE_P(
    Special, ExpTest,
    testing::Values(ExpCase{"Zero", 0.0, 1.0}, ExpCase{"NegativeZero", -0.0, 1.0},
                    ExpCase{"Infinity", kInfinity, kInfinity}, ExpCase{"NegativeInfinity", -kInfinity, 0.0},
                    ExpCase{"NotANumber", kNan, kNan}, ExpCase{"NegativeNotANumber", -kNan, kNan},
                    ExpCase{"One", 1.0, 2.718281828459045}, ExpCase{"SmallestSubnormal", 0x1p-1074, 1.0},
                    ExpCase{"Largest", std::numeric_limits<double>::max(), kInfinity},
                    ExpCase{"LargestNegative", -std::numeric_limits<double>::max(), 0.0}),
    [](const auto& test) { return test.param.name; });

// e^x is 1 + x + x^2/2 here: the square tips what would be a tie without it.
INSTANTIATE_TEST_SUITE_P(BesideOne, ExpTest,
                         testing::Values(ExpCase{"JustAboveATie", 0x1p-53, 1.0 + 0x1p-52},
                                         ExpCase{"BelowTheTie", 0x1.fffffffffffffp-54, 1.0},
                                         ExpCase{"JustAboveATieBelowOne", -0x1p-54, 1.0},
                                         ExpCase{"BelowTheTieBelowOne", -0x1.0000000000001p-54,
                                                 1.0 - 0x1p-53},
                                         ExpCase{"JustAboveTheNextTie", 0x1.8p-52, 1.0 + 0x1p-51}),
                         [](const auto& test) { return test.param.name; });

// 1024 * log(2) lies between the first two; -1022 * log(2) and -1075 * log(2), whose result is half the
// smallest number there is, between the pairs that follow.
INSTANTIATE_TEST_SUITE_P(
    Limits, ExpTest,
    testing::Values(ExpCase{"LastBelowOverflow", 0x1.62e42fefa39efp+9, 0x1.fffffffffff2ap+1023},
                    ExpCase{"FirstOverflow", 0x1.62e42fefa39f0p+9, kInfinity},
                    ExpCase{"LastNormal", -0x1.6232bdd7abcd2p+9, 0x1.000000000007cp-1022},
                    ExpCase{"FirstSubnormal", -0x1.6232bdd7abcd3p+9, 0x0.ffffffffffe7cp-1022},
                    ExpCase{"AboveHalfTheSmallest", -0x1.74910d52d3051p+9, 0x1p-1074},
                    ExpCase{"BelowHalfTheSmallest", -0x1.74910d52d3052p+9, 0.0}),
    [](const auto& test) { return test.param.name; });

struct ExpFloatCase {
    const char* name;
    float x;
    float result;
};

class ExpFloatTest : public testing::TestWithParam<ExpFloatCase> {};

TEST_P(ExpFloatTest, GivesTheseBits) {
    EXPECT_EQ(BitsOf(static_cast<double>(Exp(GetParam().x))), BitsOf(static_cast<double>(GetParam().result)));
}

constexpr float kFloatInfinity = std::numeric_limits<float>::infinity();
constexpr float kFloatNan = std::numeric_limits<float>::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(
    Special, ExpFloatTest,
    testing::Values(ExpFloatCase{"Zero", 0.0F, 1.0F}, ExpFloatCase{"NegativeZero", -0.0F, 1.0F},
                    ExpFloatCase{"Infinity", kFloatInfinity, kFloatInfinity},
                    ExpFloatCase{"NegativeInfinity", -kFloatInfinity, 0.0F},
                    ExpFloatCase{"NotANumber", kFloatNan, kFloatNan},
                    ExpFloatCase{"NegativeNotANumber", -kFloatNan, kFloatNan},
                    ExpFloatCase{"One", 1.0F, 2.7182818F},
                    ExpFloatCase{"Largest", std::numeric_limits<float>::max(), kFloatInfinity}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(Limits, ExpFloatTest,
                         testing::Values(ExpFloatCase{"JustAboveATie", 0x1p-24F, 1.0F + 0x1p-23F},
                                         ExpFloatCase{"BelowTheTie", 0x1.fffffep-25F, 1.0F},
                                         ExpFloatCase{"JustAboveATieBelowOne", -0x1p-25F, 1.0F},
                                         ExpFloatCase{"LastBelowOverflow", 0x1.62e42ep+6F, 0x1.ffff08p+127F},
                                         ExpFloatCase{"FirstOverflow", 0x1.62e430p+6F, kFloatInfinity},
                                         ExpFloatCase{"AboveHalfTheSmallest", -0x1.9fe368p+6F, 0x1p-149F},
                                         ExpFloatCase{"BelowHalfTheSmallest", -0x1.9fe36ap+6F, 0.0F}),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vastrelline
