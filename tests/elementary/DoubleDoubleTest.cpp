// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "elementary/DoubleDouble.h"
#include "elementary/SignedSum.h"

namespace vastrelline {
namespace {

bool IsExactly(const DoubleDouble& pair, const WideValue& value) {
    return SignedSum(SumOf({pair.high, pair.low}), Negated(value)).magnitude.IsZero();
}

TEST(DoubleDouble, SumKeepsWhatIsRoundedOff) {
    EXPECT_EQ(ExactSum(1, 0x1p-60).high, 1);
    EXPECT_EQ(ExactSum(1, 0x1p-60).low, 0x1p-60);
    EXPECT_EQ(ExactSum(0x1p-60, 1).low, 0x1p-60);
    EXPECT_EQ(ExactSum(0x1p-60, -1).low, 0x1p-60);
    EXPECT_EQ(ExactSumOfOrdered(-1, 0x1p-60).low, 0x1p-60);
    EXPECT_EQ(ExactSumOfOrdered(0, 3).high, 3);
    EXPECT_EQ(ExactSumOfOrdered(0, 3).low, 0);
}

TEST(DoubleDouble, ProductKeepsWhatIsRoundedOff) {
    // (1 + 2^-30)^2 = 1 + 2^-29 + 2^-60.
    const DoubleDouble square = ExactProduct(1 + 0x1p-30, 1 + 0x1p-30);
    EXPECT_EQ(square.high, 1 + 0x1p-29);
    EXPECT_EQ(square.low, 0x1p-60);
}

TEST(DoubleDouble, UpperHalfAndRestHave26Bits) {
    for (const double x :
         {0x1.fffffffffffffp0, 0x1.0000003ffffffp0, -0x1.5555555555555p7, 0x1.0000004000001p-40}) {
        const double upper = UpperHalf(x);
        for (const double half : {upper, x - upper}) {
            const double scaled = std::ldexp(half, 25 - std::ilogb(half));
            EXPECT_EQ(scaled, std::floor(scaled)) << x;
        }
    }
}

TEST(DoubleDouble, NothingIsLost) {
    std::mt19937_64 random(7);
    const auto next = [&random](int place) {
        return std::ldexp(static_cast<double>(static_cast<int64_t>(random()) >> 10), place);
    };
    for (int i = 0; i < 20000; ++i) {
        const double a = next(-53);
        const double b = next(-53 - static_cast<int>(random() % 70));
        EXPECT_TRUE(IsExactly(ExactSum(a, b), SumOf({a, b}))) << a << ' ' << b;
        EXPECT_TRUE(IsExactly(ExactProduct(a, b), SignedProduct(WideFromDouble(a), WideFromDouble(b))))
            << a << ' ' << b;
        if (std::abs(a) >= std::abs(b)) {
            EXPECT_TRUE(IsExactly(ExactSumOfOrdered(a, b), SumOf({a, b}))) << a << ' ' << b;
        }
    }
}

TEST(DoubleDouble, IsSureAwayFromTheMiddleOfTwoDoubles) {
    EXPECT_TRUE(IsSurelyRounded({1, 0x1p-55}, 0x1p-60));
    EXPECT_FALSE(IsSurelyRounded({1, 0x1p-53}, 0x1p-60));
    EXPECT_FALSE(IsSurelyRounded({1, 0x1p-53 - 0x1p-61}, 0x1p-60));
    EXPECT_FALSE(IsSurelyRounded({1, 0x1p-53 + 0x1p-61}, 0x1p-60));
    EXPECT_TRUE(IsSurelyRounded({1, 0x1p-53 - 0x1p-59}, 0x1p-60));
    EXPECT_FALSE(IsSurelyRounded({-1, 0x1p-54}, -0x1p-60));
}

}  // namespace
}  // namespace vastrelline
