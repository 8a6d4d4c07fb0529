// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "elementary/SignedSum.h"
#include "elementary/WideExponential.h"

namespace vastrelline {
namespace {

// What may be lost of numbers of about 1.
constexpr int kNearly = -300;

// The first bits of e and of log(2), as published, the lowest first.
const WideValue kBaseOfLogarithms{
    WideNumber({0xF4BF8D8D, 0x926CFBE5, 0x324E7738, 0x5190CFEF, 0xA784D904, 0x38B4DA56, 0x62E7160F,
                0x9CF4F3C7, 0xBF715880, 0x8AED2A6A, 0xB7E15162, 2})
        .Shifted(-32)};
const WideValue kLogOfTwo{WideNumber({0x6DEBAC98, 0xE7B87620, 0x8BAAFA2B, 0x8A0D175B, 0x7298B62D, 0x40F34326,
                                      0x03F2F6AF, 0xC9E3B398, 0xD1CF79AB, 0xB17217F7, 0, 0})};

TEST(WideExp, OfOneIsTheBaseOfLogarithms) {
    EXPECT_LT(DistancePlace(WideExp(WideFromDouble(1)), kBaseOfLogarithms), -285);
}

TEST(WideExp, OfZeroIsOne) { EXPECT_EQ(RoundToDouble(WideExp(WideFromDouble(0))), 1.0); }

TEST(WideExp, OfOppositesIsInverse) {
    for (const double x : {0x1p-60, 0.1, 0.6931, 0.6932, 1.0, 7.5, 300.0, 745.0, 800000.0}) {
        const WideValue product = SignedProduct(WideExp(WideFromDouble(x)), WideExp(WideFromDouble(-x)));
        EXPECT_LT(DistancePlace(product, WideFromDouble(1)), kNearly) << x;
    }
}

TEST(WideExp, OfASumIsTheProduct) {
    for (const double x : {0.25, 1.5, -3.0, 40.0}) {
        for (const double y : {0.125, -2.75, 17.0}) {
            const WideValue product = SignedProduct(WideExp(WideFromDouble(x)), WideExp(WideFromDouble(y)));
            const WideValue whole = WideExp(WideFromDouble(x + y));
            const WideValue quotient{product.magnitude / whole.magnitude, product.exponent - whole.exponent,
                                     false};
            EXPECT_LT(DistancePlace(quotient, WideFromDouble(1)), kNearly) << x << ' ' << y;
        }
    }
}

TEST(WideExp, HasItsMagnitudeFromOneToTwo) {
    for (double x = -20; x < 20; x += 0.37) EXPECT_EQ(WideExp(WideFromDouble(x)).magnitude.Whole(), 1U) << x;
}

TEST(WideLog, OfPowersOfTwoIsAMultipleOfThatOfTwo) {
    EXPECT_LT(DistancePlace(WideLog(2), kLogOfTwo), -318);
    EXPECT_LT(DistancePlace(WideLog(0.5), Negated(kLogOfTwo)), -318);
    EXPECT_LT(DistancePlace(WideLog(0x1p-1074), {WideNumber(1074) * kLogOfTwo.magnitude, 0, true}), -305);
    EXPECT_TRUE(WideLog(1).magnitude.IsZero());
}

// With e^x from a series of its own.
TEST(WideLog, IsUndoneByExp) {
    for (const double x :
         {0x1p-1074, 1e-300, 0.1, 0.70, 0.71, 1 - 0x1p-53, 1 + 0x1p-52, 1.41, 1.42, 10.0, 65535.0, 1e300}) {
        const WideValue back = WideExp(WideLog(x));
        WideValue expected{WideNumber(SplitDouble(x).magnitude), SplitDouble(x).exponent, false};
        const WideValue quotient{back.magnitude / expected.magnitude.Shifted(-expected.magnitude.TopBit()),
                                 back.exponent - expected.exponent - expected.magnitude.TopBit(), false};
        EXPECT_LT(DistancePlace(quotient, WideFromDouble(1)), kNearly) << x;
    }
}

TEST(WideLog, OfAProductIsTheSum) {
    for (const double x : {0.75, 1.25, 3.0, 4095.0})
        for (const double y : {0.5, 1.125, 7.0})
            EXPECT_LT(DistancePlace(SignedSum(WideLog(x), WideLog(y)), WideLog(x * y)), -310)
                << x << ' ' << y;
}

TEST(WideFromDouble, CutsOffBehindTheLastBit) {
    EXPECT_EQ(RoundToDouble(WideFromDouble(-1.75)), -1.75);
    EXPECT_EQ(RoundToDouble(WideFromDouble(0x1.8p-320)), 0x1p-320);
    EXPECT_TRUE(WideFromDouble(0x1.fp-321).magnitude.IsZero());
    EXPECT_EQ(RoundToDouble(WideFromDouble(0x1.fffffffffffffp63)), 0x1.fffffffffffffp63);
}

}  // namespace
}  // namespace vastrelline
