// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <limits>

#include "EachFunction.h"
#include "elementary/Power.h"

namespace vastrelline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargest = std::numeric_limits<double>::max();

struct PowCase {
    const char* name;
    double x;
    double y;
    double result;
};

class PowTest : public testing::TestWithParam<PowCase> {};

TEST_P(PowTest, GivesTheseBits) {
    EXPECT_EQ(BitsOf(Pow(GetParam().x, GetParam().y)), BitsOf(GetParam().result));
}

INSTANTIATE_TEST_SUITE_P(
    OfZero, PowTest,
    testing::Values(PowCase{"OddNegative", 0.0, -3.0, kInfinity},
                    PowCase{"MinusOddNegative", -0.0, -3.0, -kInfinity},
                    PowCase{"MinusLargestOddNegative", -0.0, -9007199254740991.0, -kInfinity},
                    PowCase{"EvenNegative", 0.0, -2.0, kInfinity},
                    PowCase{"MinusEvenNegative", -0.0, -2.0, kInfinity},
                    PowCase{"BrokenNegative", 0.0, -0.5, kInfinity},
                    PowCase{"MinusBrokenNegative", -0.0, -2.5, kInfinity},
                    PowCase{"NegativeInfinity", 0.0, -kInfinity, kInfinity},
                    PowCase{"MinusNegativeInfinity", -0.0, -kInfinity, kInfinity},
                    PowCase{"Odd", 0.0, 5.0, 0.0}, PowCase{"MinusOdd", -0.0, 5.0, -0.0},
                    PowCase{"MinusEven", -0.0, 4.0, 0.0}, PowCase{"MinusBroken", -0.0, 0.5, 0.0},
                    PowCase{"MinusInfinity", -0.0, kInfinity, 0.0}, PowCase{"NotANumber", 0.0, kNan, kNan}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(WhateverTheOtherIs, PowTest,
                         testing::Values(PowCase{"OneToNotANumber", 1.0, kNan, 1.0},
                                         PowCase{"OneToInfinity", 1.0, -kInfinity, 1.0},
                                         PowCase{"OneToAny", 1.0, 1e300, 1.0},
                                         PowCase{"NotANumberToZero", kNan, 0.0, 1.0},
                                         PowCase{"NotANumberToMinusZero", -kNan, -0.0, 1.0},
                                         PowCase{"InfinityToZero", kInfinity, 0.0, 1.0},
                                         PowCase{"NegativeInfinityToMinusZero", -kInfinity, -0.0, 1.0},
                                         PowCase{"ZeroToZero", 0.0, 0.0, 1.0},
                                         PowCase{"MinusZeroToZero", -0.0, -0.0, 1.0},
                                         PowCase{"NegativeToZero", -2.5, 0.0, 1.0},
                                         PowCase{"MinusOneToInfinity", -1.0, kInfinity, 1.0},
                                         PowCase{"MinusOneToNegativeInfinity", -1.0, -kInfinity, 1.0}),
                         [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(NoNumber, PowTest,
                         testing::Values(PowCase{"NegativeToBroken", -2.0, 0.5, kNan},
                                         PowCase{"NegativeToBrokenNegative", -0.5, -1.5, kNan},
                                         PowCase{"MinusOneToBroken", -1.0, 0.1, kNan},
                                         PowCase{"LargestToBroken", -kLargest, 0x1p-1074, kNan},
                                         PowCase{"NotANumberToOne", kNan, 1.0, kNan},
                                         PowCase{"NegativeNotANumber", -kNan, 2.0, kNan},
                                         PowCase{"TwoToNotANumber", 2.0, -kNan, kNan},
                                         PowCase{"MinusOneToNotANumber", -1.0, kNan, kNan},
                                         PowCase{"InfinityToNotANumber", kInfinity, kNan, kNan}),
                         [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(Infinities, PowTest,
                         testing::Values(PowCase{"SmallToNegative", 0.5, -kInfinity, kInfinity},
                                         PowCase{"LargeToNegative", 2.0, -kInfinity, 0.0},
                                         PowCase{"SmallToPositive", -0.5, kInfinity, 0.0},
                                         PowCase{"LargeToPositive", -2.0, kInfinity, kInfinity},
                                         PowCase{"BelowOneToPositive", 0x1.fffffffffffffp-1, kInfinity, 0.0},
                                         PowCase{"PositiveToNegative", kInfinity, -0.5, 0.0},
                                         PowCase{"PositiveToPositive", kInfinity, 0x1p-1074, kInfinity},
                                         PowCase{"NegativeToOddNegative", -kInfinity, -3.0, -0.0},
                                         PowCase{"NegativeToEvenNegative", -kInfinity, -2.0, 0.0},
                                         PowCase{"NegativeToBrokenNegative", -kInfinity, -0.5, 0.0},
                                         PowCase{"NegativeToOdd", -kInfinity, 3.0, -kInfinity},
                                         PowCase{"NegativeToEven", -kInfinity, 2.0, kInfinity},
                                         PowCase{"NegativeToBroken", -kInfinity, 0.5, kInfinity},
                                         PowCase{"InfinityToInfinity", kInfinity, kInfinity, kInfinity},
                                         PowCase{"InfinityToNegativeInfinity", -kInfinity, -kInfinity, 0.0}),
                         [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Exact, PowTest,
    testing::Values(PowCase{"WholeNumbers", 3.0, 5.0, 243.0}, PowCase{"NegativeToOdd", -3.0, 5.0, -243.0},
                    PowCase{"NegativeToEven", -3.0, 4.0, 81.0}, PowCase{"TenTo22", 10.0, 22.0, 1e22},
                    PowCase{"ThreeTo33", 3.0, 33.0, 5559060566555523.0}, PowCase{"ToOne", 0.1, 1.0, 0.1},
                    PowCase{"SubnormalToOne", 0x1.8p-1073, 1.0, 0x1.8p-1073},
                    PowCase{"Reciprocal", 0.25, -1.0, 4.0}, PowCase{"Root", 1522756.0, 0.5, 1234.0},
                    PowCase{"ReciprocalRoot", 4.0, -0.5, 0.5}, PowCase{"RootCubed", 4.0, 1.5, 8.0},
                    PowCase{"FourthRoot", 81.0, 0.25, 3.0},
                    PowCase{"RootOfTheSmallest", 0x1p-1074, 0.5, 0x1p-537},
                    PowCase{"MinusOneToOdd", -1.0, 9007199254740991.0, -1.0},
                    PowCase{"MinusOneToEven", -1.0, 9007199254740992.0, 1.0}),
    [](const auto& test) { return test.param.name; });

// Odd numbers of 54 bits lie in the middle between two doubles, of which the even one is taken. A number of
// 55 bits that ends in 01 does not.
INSTANTIATE_TEST_SUITE_P(
    Ties, PowTest,
    testing::Values(PowCase{"ThreeTo34", 3.0, 34.0, 16677181699666568.0},  // ...569
                    PowCase{"FiveTo23", 5.0, 23.0, 11920928955078124.0},   // ...125
                    PowCase{"SevenTo19", 7.0, 19.0, 11398895185373144.0},  // ...143
                    PowCase{"MinusSevenTo19", -7.0, 19.0, -11398895185373144.0},
                    PowCase{"Square", 94906267.0, 2.0, 9007199515875288.0},  // ...289
                    PowCase{"SquareBelowATie", 134217729.0, 2.0, 0x1p54 + 0x1p28},
                    PowCase{"SquareJustBelowATie", 0x1.fffffffffffffp+511, 2.0, 0x1.ffffffffffffep+1023},
                    // The root of 1 + 2^-52 is 1 + 2^-53 - 2^-107 and less.
                    PowCase{"RootJustBelowATie", 1.0 + 0x1p-52, 0.5, 1.0},
                    // The reciprocal of 2^53 - 1 is 2^-53 + 2^-106 and 2^-159 and more.
                    PowCase{"ReciprocalJustAboveATie", 9007199254740991.0, -1.0, 0x1.0000000000001p-53},
                    PowCase{"TenTo23", 10.0, 23.0, 1e23},
                    PowCase{"RootOfTwo", 2.0, 0.5, 0x1.6a09e667f3bcdp+0}),
    [](const auto& test) { return test.param.name; });

// In units of 2^-1074, the smallest number there is.
INSTANTIATE_TEST_SUITE_P(
    Subnormal, PowTest,
    testing::Values(PowCase{"Smallest", 2.0, -1074.0, 0x1p-1074}, PowCase{"TieWithZero", 2.0, -1075.0, 0.0},
                    PowCase{"MinusTieWithZero", -0x1p-215, 5.0, -0.0},
                    PowCase{"TieUp", 0x1.8p-214, 5.0, 122 * 0x1p-1074},             // 121.5 units
                    PowCase{"TieDown", 0x1.8p-42, 25.0, 423644304722 * 0x1p-1074},  // 3^25 / 2 units
                    PowCase{"QuarterUnit", 0x1p-538, 2.0, 0.0},
                    PowCase{"BitMoreThanHalfAUnit", 0x1.8p-538, 2.0, 0x1p-1074},
                    PowCase{"ReciprocalExact", 0x1p1023, -1.0, 0x1p-1023},
                    PowCase{"ReciprocalThirds", 0x1.8p1023, -1.0, 1501199875790165 * 0x1p-1074},
                    PowCase{"ReciprocalOfTheLargest", kLargest, -1.0, 0x1p-1024},
                    PowCase{"ReciprocalOfASubnormal", 0x1p-1023, -1.0, 0x1p1023},
                    PowCase{"ReciprocalTooLarge", 0x1p-1024, -1.0, kInfinity}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(Limits, PowTest,
                         testing::Values(PowCase{"LargestPowerOfTwo", 2.0, 1023.0, 0x1p1023},
                                         PowCase{"TooLarge", 2.0, 1024.0, kInfinity},
                                         PowCase{"NegativeTooLarge", -2.0, 1025.0, -kInfinity},
                                         PowCase{"LargestPowerOfTen", 10.0, 308.0, 1e308},
                                         PowCase{"TooLargePowerOfTen", 10.0, 309.0, kInfinity},
                                         PowCase{"LargestToOne", -kLargest, 1.0, -kLargest},
                                         PowCase{"LargestToMore", kLargest, 0x1.0000000000001p+0, kInfinity},
                                         PowCase{"SquareTooLarge", 0x1p512, 2.0, kInfinity},
                                         PowCase{"HugeExponent", 1.5, 1e300, kInfinity},
                                         PowCase{"HugeNegativeExponent", 1.5, -1e300, 0.0},
                                         PowCase{"HugeOddExponent", -0.5, 9007199254740991.0, -0.0},
                                         PowCase{"HugeEvenExponent", -1.5, 9007199254740994.0, kInfinity},
                                         PowCase{"TinyExponent", 1e300, 0x1p-1074, 1.0},
                                         PowCase{"TinyNegativeExponent", 1e300, -0x1p-1000, 1.0},
                                         // e * (1 - 2^-53) and less.
                                         PowCase{"JustAboveOneToMuch", 1.0 + 0x1p-52, 0x1p52,
                                                 2.718281828459045}),
                         [](const auto& test) { return test.param.name; });

struct PowFloatCase {
    const char* name;
    float x;
    float y;
    float result;
};

class PowFloatTest : public testing::TestWithParam<PowFloatCase> {};

TEST_P(PowFloatTest, GivesTheseBits) {
    EXPECT_EQ(BitsOf(static_cast<double>(Pow(GetParam().x, GetParam().y))),
              BitsOf(static_cast<double>(GetParam().result)));
}

constexpr float kFloatInfinity = std::numeric_limits<float>::infinity();
constexpr float kFloatNan = std::numeric_limits<float>::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(
    Special, PowFloatTest,
    testing::Values(PowFloatCase{"OneToNotANumber", 1.0F, kFloatNan, 1.0F},
                    PowFloatCase{"NotANumberToZero", kFloatNan, -0.0F, 1.0F},
                    PowFloatCase{"NegativeNotANumber", -kFloatNan, 1.0F, kFloatNan},
                    PowFloatCase{"MinusZeroToOddNegative", -0.0F, -1.0F, -kFloatInfinity},
                    PowFloatCase{"ZeroToZero", 0.0F, 0.0F, 1.0F},
                    PowFloatCase{"MinusZeroToOdd", -0.0F, 3.0F, -0.0F},
                    PowFloatCase{"MinusOneToInfinity", -1.0F, kFloatInfinity, 1.0F},
                    PowFloatCase{"NegativeToBroken", -1.5F, 0.5F, kFloatNan},
                    PowFloatCase{"MinusInfinityToOdd", -kFloatInfinity, 3.0F, -kFloatInfinity},
                    PowFloatCase{"LargestOddExponent", -1.0F, 16777215.0F, -1.0F},
                    PowFloatCase{"EvenExponent", -1.0F, 16777216.0F, 1.0F}),
    [](const auto& test) { return test.param.name; });

// Odd numbers of 25 bits are ties.
INSTANTIATE_TEST_SUITE_P(
    Values, PowFloatTest,
    testing::Values(PowFloatCase{"Exact", 3.0F, 15.0F, 14348907.0F},
                    PowFloatCase{"ExactNegative", -3.0F, 15.0F, -14348907.0F},
                    PowFloatCase{"Tie", 11.0F, 7.0F, 19487172.0F},        // ...171
                    PowFloatCase{"BelowATie", 3.0F, 16.0F, 43046720.0F},  // ...721
                    PowFloatCase{"AboveATie", 7.0F, 9.0F, 40353608.0F},   // ...607
                    PowFloatCase{"Root", 81.0F, 0.5F, 9.0F}, PowFloatCase{"ToOne", 0.1F, 1.0F, 0.1F},
                    PowFloatCase{"Smallest", 2.0F, -149.0F, 0x1p-149F},
                    PowFloatCase{"TieWithZero", 2.0F, -150.0F, 0.0F},
                    PowFloatCase{"SubnormalTie", 0x1.8p-29F, 5.0F, 122 * 0x1p-149F},  // 121.5 units
                    PowFloatCase{"TooLarge", 2.0F, 128.0F, kFloatInfinity},
                    PowFloatCase{"NegativeTooLarge", -2.0F, 129.0F, -kFloatInfinity},
                    // White as a fraction of itself, and black.
                    PowFloatCase{"White", 1.0F, 0.6666667F, 1.0F},
                    PowFloatCase{"Black", 0.0F, 0.6666667F, 0.0F}),
    [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vastrelline
