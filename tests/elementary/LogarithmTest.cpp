// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <limits>

#include "EachFunction.h"
#include "elementary/Logarithm.h"

namespace vastrelline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kLogOf2 = 0x1.62e42fefa39efp-1;

struct LogCase {
    const char* name;
    double x;
    double result;
};

class LogTest : public testing::TestWithParam<LogCase> {};

TEST_P(LogTest, GivesTheseBits) { EXPECT_EQ(BitsOf(Log(GetParam().x)), BitsOf(GetParam().result)); }

INSTANTIATE_TEST_SUITE_P(
    Special, LogTest,
    testing::Values(LogCase{"Zero", 0.0, -kInfinity}, LogCase{"NegativeZero", -0.0, -kInfinity},
                    LogCase{"One", 1.0, 0.0}, LogCase{"MinusOne", -1.0, kNan},
                    LogCase{"SmallestNegative", -0x1p-1074, kNan}, LogCase{"Infinity", kInfinity, kInfinity},
                    LogCase{"NegativeInfinity", -kInfinity, kNan}, LogCase{"NotANumber", kNan, kNan},
                    LogCase{"NegativeNotANumber", -kNan, kNan}),
    [](const auto& test) { return test.param.name; });

// A power of two has its exponent times the logarithm of 2; where that is a power of two, too, all is exact.
INSTANTIATE_TEST_SUITE_P(
    PowersOfTwo, LogTest,
    testing::Values(LogCase{"Two", 2.0, kLogOf2}, LogCase{"Half", 0.5, -kLogOf2},
                    LogCase{"Four", 4.0, 2 * kLogOf2}, LogCase{"To16", 0x1p16, 16 * kLogOf2},
                    LogCase{"ToMinus512", 0x1p-512, -512 * kLogOf2},
                    LogCase{"SmallestNormal", 0x1p-1022, -0x1.6232bdd7abcd2p+9},
                    LogCase{"SmallestSubnormal", 0x1p-1074, -0x1.74385446d71c3p+9},
                    LogCase{"Largest", std::numeric_limits<double>::max(), 0x1.62e42fefa39efp+9}),
    [](const auto& test) { return test.param.name; });

// The logarithm of 1 + x is x - x^2/2 + x^3/3 here. Of six last places above 1, the square takes four and a
// half of the result's, and the cube tips the tie.
INSTANTIATE_TEST_SUITE_P(BesideOne, LogTest,
                         testing::Values(LogCase{"NextAbove", 1.0 + 0x1p-52, 0x1.fffffffffffffp-53},
                                         LogCase{"NextBelow", 1.0 - 0x1p-53, -0x1p-53},
                                         LogCase{"SixAbove", 1.0 + 6 * 0x1p-52, 0x1.7fffffffffffcp-50},
                                         LogCase{"SixBelow", 1.0 - 6 * 0x1p-53, -0x1.8000000000002p-51}),
                         [](const auto& test) { return test.param.name; });

struct LogFloatCase {
    const char* name;
    float x;
    float result;
};

class LogFloatTest : public testing::TestWithParam<LogFloatCase> {};

TEST_P(LogFloatTest, GivesTheseBits) {
    EXPECT_EQ(BitsOf(static_cast<double>(Log(GetParam().x))), BitsOf(static_cast<double>(GetParam().result)));
}

constexpr float kFloatInfinity = std::numeric_limits<float>::infinity();
constexpr float kFloatNan = std::numeric_limits<float>::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(Special, LogFloatTest,
                         testing::Values(LogFloatCase{"Zero", 0.0F, -kFloatInfinity},
                                         LogFloatCase{"NegativeZero", -0.0F, -kFloatInfinity},
                                         LogFloatCase{"One", 1.0F, 0.0F},
                                         LogFloatCase{"MinusOne", -1.0F, kFloatNan},
                                         LogFloatCase{"Infinity", kFloatInfinity, kFloatInfinity},
                                         LogFloatCase{"NegativeInfinity", -kFloatInfinity, kFloatNan},
                                         LogFloatCase{"NotANumber", -kFloatNan, kFloatNan},
                                         LogFloatCase{"Two", 2.0F, 0x1.62e43p-1F},
                                         LogFloatCase{"Half", 0.5F, -0x1.62e43p-1F},
                                         LogFloatCase{"To16", 0x1p16F, 16 * 0x1.62e43p-1F},
                                         LogFloatCase{"NextAboveOne", 1.0F + 0x1p-23F, 0x1.fffffep-24F},
                                         LogFloatCase{"NextBelowOne", 1.0F - 0x1p-24F, -0x1p-24F}),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vastrelline
