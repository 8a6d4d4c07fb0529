// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "pixels/Quotient.h"

namespace vastrelline {
namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Quotient, OfNumbersIsTheirs) {
    EXPECT_EQ(Quotient(7, 2), 3.5);
    EXPECT_EQ(Quotient(-7, 0), -kInfinite);
    EXPECT_EQ(Quotient(7, kInfinite), 0);
}

TEST(Quotient, OfWhatHasNoneIsNegativeOnEveryProcessor) {
    for (const double value : {0.0, kInfinite})
        for (const double a : {value, -value})
            for (const double b : {value, -value}) {
                EXPECT_TRUE(std::isnan(Quotient(a, b))) << a << " / " << b;
                EXPECT_TRUE(std::signbit(Quotient(a, b))) << a << " / " << b;
            }
}

TEST(Quotient, OfWhatIsNotANumberKeepsItsSign) {
    for (const double sign : {1.0, -1.0}) {
        const double given = std::copysign(kNotANumber, sign);
        EXPECT_TRUE(std::isnan(Quotient(given, 2)));
        EXPECT_EQ(std::signbit(Quotient(given, 2)), sign < 0);
        EXPECT_TRUE(std::isnan(Quotient(2, given)));
        EXPECT_EQ(std::signbit(Quotient(2, given)), sign < 0);
    }
}

}  // namespace
}  // namespace vastrelline
