// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>

#include "elementary/LogarithmTable.h"
#include "elementary/PowerTable.h"
#include "elementary/SignedSum.h"
#include "elementary/SineTable.h"
#include "elementary/WideTurn.h"

namespace vastrelline {
namespace {

// Each entry against the series of the wide numbers.
constexpr int kPairPrecision = -105;

TEST(PowerTable, HoldsTheRootsOfPowersOfTwo) {
    const WideNumber logOfTwo = WideLog(2).magnitude;
    for (size_t j = 0; j < kRootPowers.size(); ++j) {
        const WideValue power = WideExp({(WideNumber(j) * logOfTwo).DividedBy(64)});
        EXPECT_EQ(kRootPowers[j].high, RoundToDouble(power)) << j;
        EXPECT_LT(DistancePlace(SumOf({kRootPowers[j].high, kRootPowers[j].low}), power), kPairPrecision)
            << j;
    }
}

TEST(LogarithmTable, HoldsInversesOfItsCentres) {
    for (int i = 0; i < static_cast<int>(kLogarithms.size()); ++i) {
        const double centre = (i < kFirstHalvedCentre ? 1 : 0.5) * (1 + i / 128.0);
        const double inverse = kLogarithms[static_cast<size_t>(i)].inverse;
        EXPECT_LE(std::abs(inverse - 1 / centre), 0x1p-17) << i;
        EXPECT_EQ(inverse * 0x1p16, std::floor(inverse * 0x1p16)) << i;
    }
    EXPECT_EQ(kLogarithms.front().inverse, 1);
    EXPECT_EQ(kLogarithms.back().inverse, 1);
}

TEST(LogarithmTable, HoldsTheirLogarithms) {
    for (const LogarithmEntry& entry : kLogarithms) {
        EXPECT_EQ(entry.high * 0x1p42, std::floor(entry.high * 0x1p42)) << entry.inverse;
        const WideValue logarithm = Negated(WideLog(entry.inverse));
        EXPECT_LT(DistancePlace(SumOf({entry.high, entry.low}), logarithm), -95) << entry.inverse;
    }
}

// The sine of the nearest double and, as that is 2^-51 away at most, two terms of the series.
TEST(SineTable, HoldsTheSinesOfAWholeTurn) {
    const WideValue halfTurn{WideNumber({0x38D01377, 0x452821E6, 0xEC4E6C89, 0x082EFA98, 0x299F31D0,
                                         0xA4093822, 0x03707344, 0x13198A2E, 0x85A308D3, 0x243F6A88, 3, 0})};
    for (size_t j = 0; j < kSines.size(); ++j) {
        const WideValue angle{(WideNumber(j) * halfTurn.magnitude).DividedBy(64)};
        const double nearest = RoundToDouble(angle);
        const WideValue rest = SignedSum(angle, Negated(WideFromDouble(nearest)));
        const WideValue sine = WideSin(nearest);
        const WideValue first = SignedProduct(rest, WideCos(nearest));
        WideValue second = SignedProduct(SignedProduct(rest, rest), Negated(sine));
        second.exponent -= 1;
        const WideValue expected = SignedSum(SignedSum(sine, first), second);
        EXPECT_LT(DistancePlace(SumOf({kSines[j].high, kSines[j].low}), expected), kPairPrecision) << j;
    }
    EXPECT_EQ(kSines[0].high, 0);
    EXPECT_EQ(kSines[32].high, 1);
    EXPECT_EQ(kSines[64].high, 0);
    EXPECT_EQ(kSines[96].high, -1);
}

}  // namespace
}  // namespace vastrelline
