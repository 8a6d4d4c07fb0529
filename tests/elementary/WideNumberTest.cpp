// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>

#include "elementary/WideNumber.h"

namespace vastrelline {
namespace {

// 2^place.
WideNumber Bit(int place) { return WideNumber(1).Shifted(place); }

bool AreEqual(const WideNumber& a, const WideNumber& b) { return !(a < b) && !(b < a); }

constexpr int kLast = -WideNumber::kFractionBits;
constexpr uint64_t kAllOnes = ~uint64_t{0};

TEST(WideNumber, IsZeroAtFirst) {
    EXPECT_TRUE(WideNumber().IsZero());
    EXPECT_FALSE(Bit(kLast).IsZero());
    EXPECT_FALSE(Bit(63).IsZero());
}

TEST(WideNumber, HoldsAWholeNumber) {
    EXPECT_EQ(WideNumber(0x123456789ABCDEF0).Whole(), 0x123456789ABCDEF0U);
    EXPECT_TRUE(WideNumber(kAllOnes).Fraction().IsZero());
}

TEST(WideNumber, TakesTheFirstLimbAsTheLowest) {
    const WideNumber number({1, 0, 0, 0, 0, 0, 0, 0, 0, 0x80000000, 5, 6});
    EXPECT_EQ(number.Whole(), (uint64_t{6} << 32) + 5);
    EXPECT_TRUE(AreEqual(number.Fraction(), Bit(-1) + Bit(kLast)));
}

TEST(WideNumber, MovesByPlaces) {
    EXPECT_EQ(Bit(63).Whole(), uint64_t{1} << 63);
    EXPECT_EQ(Bit(kLast).Shifted(32 + 320).Whole(), uint64_t{1} << 32);
    EXPECT_TRUE(AreEqual(Bit(5).Shifted(-37), Bit(-32)));
    EXPECT_TRUE(AreEqual(Bit(-32).Shifted(0), Bit(-32)));
    EXPECT_TRUE(AreEqual(WideNumber(3).Shifted(-33), Bit(-32) + Bit(-33)));
}

TEST(WideNumber, LosesWhatMovesOut) {
    EXPECT_TRUE(Bit(kLast).Shifted(-1).IsZero());
    EXPECT_TRUE(Bit(63).Shifted(1).IsZero());
    EXPECT_TRUE(WideNumber(kAllOnes).Shifted(-10000).IsZero());
    EXPECT_TRUE(WideNumber(kAllOnes).Shifted(10000).IsZero());
    EXPECT_TRUE(AreEqual(WideNumber(3).Shifted(-320).Shifted(-1), Bit(kLast)));
}

TEST(WideNumber, TopBitIsThatOfTheMagnitude) {
    for (const int place : {kLast, -320 + 31, -320 + 32, -33, -32, -1, 0, 1, 31, 32, 63})
        EXPECT_EQ((Bit(place) + (place > kLast ? Bit(kLast) : WideNumber())).TopBit(), place);
}

TEST(WideNumber, CarriesThroughAllLimbs) {
    const WideNumber justBelow = WideNumber(7) - Bit(kLast);
    EXPECT_EQ(justBelow.Whole(), 6U);
    EXPECT_TRUE(justBelow < WideNumber(7));
    EXPECT_TRUE(AreEqual(justBelow + Bit(kLast), WideNumber(7)));
    EXPECT_TRUE((WideNumber(kAllOnes) + WideNumber(1)).IsZero());
}

TEST(WideNumber, MultipliesAsOnPaper) {
    EXPECT_EQ((WideNumber(0xFFFFFFFF) * WideNumber(0xFFFFFFFF)).Whole(), 0xFFFFFFFE00000001U);
    EXPECT_TRUE(AreEqual((WideNumber(3) + Bit(-1)) * (WideNumber(2) + Bit(-2)),
                         WideNumber(7) + Bit(-1) + Bit(-2) + Bit(-3)));
    EXPECT_TRUE(AreEqual(Bit(-160) * Bit(-160), Bit(kLast)));
    EXPECT_TRUE((Bit(-160) * Bit(-161)).IsZero());
    // (1 - 2^-320)^2 = 1 - 2^-319 + 2^-640, of which the last is cut off.
    const WideNumber justBelow = WideNumber(1) - Bit(kLast);
    EXPECT_TRUE(AreEqual(justBelow * justBelow, WideNumber(1) - Bit(kLast + 1)));
}

TEST(WideNumber, DividesAsOnPaper) {
    EXPECT_TRUE(AreEqual(WideNumber(7) / WideNumber(2), WideNumber(3) + Bit(-1)));
    EXPECT_TRUE(AreEqual(WideNumber(1) / Bit(-40), Bit(40)));
    EXPECT_TRUE((WideNumber() / WideNumber(9)).IsZero());
    EXPECT_TRUE(AreEqual(WideNumber(9) / WideNumber(9), WideNumber(1)));
    EXPECT_TRUE(AreEqual(WideNumber(1) / Bit(63), Bit(-63)));
    EXPECT_TRUE(AreEqual(WideNumber(kAllOnes) / WideNumber(1), WideNumber(kAllOnes)));
    EXPECT_TRUE(AreEqual(Bit(kLast) / Bit(kLast), WideNumber(1)));
    EXPECT_TRUE((Bit(kLast) / WideNumber(2)).IsZero());
    // The dividend has one bit more than the divisor and yet its first bits are less.
    EXPECT_TRUE(AreEqual(WideNumber(8) / WideNumber(5), WideNumber(1) + WideNumber(3).DividedBy(5)));
    // A third is 0.010101..., and its last bit, of an even place, is set.
    const WideNumber third = WideNumber(1) / WideNumber(3);
    EXPECT_EQ(third.Shifted(64).Whole(), 0x5555555555555555U);
    EXPECT_TRUE(AreEqual(third * WideNumber(3), WideNumber(1) - Bit(kLast)));
    EXPECT_TRUE(AreEqual(WideNumber(1).DividedBy(3), third));
    EXPECT_TRUE(AreEqual(WideNumber(kAllOnes).DividedBy(0xFFFFFFFF), WideNumber(0x100000001)));
}

TEST(WideNumber, QuotientTimesDivisorIsTheDividend) {
    uint64_t state = 88172645463325252;
    const auto next = [&state] {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        return state;
    };
    for (int i = 0; i < 200; ++i) {
        const WideNumber dividend = WideNumber(next()).Shifted(-40) + WideNumber(next()).Shifted(-130);
        const WideNumber divisor = WideNumber(next()).Shifted(-50) + WideNumber(next()).Shifted(-200);
        // Below 2^14; what the quotient lacks is less than its last bit, and so is what the product cuts off.
        const WideNumber back = dividend / divisor * divisor;
        EXPECT_TRUE(!(dividend < back));
        EXPECT_TRUE(dividend - back < Bit(kLast + 16));
    }
}

}  // namespace
}  // namespace vastrelline
