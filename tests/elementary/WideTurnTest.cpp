// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>

#include "elementary/SignedSum.h"
#include "elementary/WideTurn.h"

namespace vastrelline {
namespace {

constexpr double kAngles[] = {
    0x1p-60, 0.001, 0.5,   0.785,  0.786,  1.0,    1.57,    1.571,  2.0,    2.356,
    2.357,   3.0,   3.142, 4.0,    5.0,    6.28,   6.2832,  -0.001, -1.0,   -2.5,
    -4.5,    100.0, 1e5,   0x1p53, 0x1p60, 0x1p90, 0x1p900, 1e22,   -1e300, 0x1.fffffffffffffp1023};

TEST(WideTurn, SquaresAddUpToOne) {
    for (const double x : kAngles) {
        const WideValue sine = WideSin(x);
        const WideValue cosine = WideCos(x);
        const WideValue sum = SignedSum(SignedProduct(sine, sine), SignedProduct(cosine, cosine));
        EXPECT_LT(DistancePlace(sum, WideFromDouble(1)), -250) << x;
    }
}

// All doubles are reached by doubling, so that a wrong bit of 2 / pi shows itself.
TEST(WideTurn, DoubleAngles) {
    int place = -40;
    for (double x = 0x1.921fb54442d18p-40; x < 0x1p1023; x *= 2, ++place) {
        const WideValue product = SignedProduct(WideSin(x), WideCos(x));
        const WideValue twice{product.magnitude, product.exponent + 1, product.isNegative};
        EXPECT_LT(DistancePlace(WideSin(2 * x), twice), -250) << place;
        const WideValue square = SignedProduct(WideSin(x), WideSin(x));
        const WideValue rest = SignedSum(WideFromDouble(1), {square.magnitude, square.exponent + 1, true});
        EXPECT_LT(DistancePlace(WideCos(2 * x), rest), -250) << place;
    }
}

// Near 0 by the first terms of the series.
TEST(WideTurn, StartsAsTheSeriesDoes) {
    constexpr double kX = 0x1p-40;  // x^5 / 120 is below 2^-206
    const WideValue cube{WideNumber(1).Shifted(-120).DividedBy(6), 0, true};
    EXPECT_LT(DistancePlace(WideSin(kX), SignedSum(WideFromDouble(kX), cube)), -206);
    const WideValue fourth{WideNumber(1).Shifted(-160).DividedBy(24)};
    const WideValue even = SignedSum(SignedSum(WideFromDouble(1), WideFromDouble(-0x1p-81)), fourth);
    EXPECT_LT(DistancePlace(WideCos(kX), even), -249);
}

TEST(WideTurn, HasTheSignsOfItsQuarters) {
    const auto sine = [](double x) { return RoundToDouble(WideSin(x)); };
    const auto cosine = [](double x) { return RoundToDouble(WideCos(x)); };
    EXPECT_GT(sine(1), 0.8);
    EXPECT_GT(cosine(1), 0.5);
    EXPECT_GT(sine(2), 0.9);
    EXPECT_LT(cosine(2), -0.4);
    EXPECT_LT(sine(4), -0.7);
    EXPECT_LT(cosine(4), -0.6);
    EXPECT_LT(sine(5), -0.9);
    EXPECT_GT(cosine(5), 0.2);
    for (const double x : kAngles) {
        EXPECT_EQ(sine(-x), -sine(x)) << x;
        EXPECT_EQ(cosine(-x), cosine(x)) << x;
    }
    EXPECT_EQ(sine(0), 0);
    EXPECT_EQ(cosine(0), 1);
}

}  // namespace
}  // namespace vastrelline
