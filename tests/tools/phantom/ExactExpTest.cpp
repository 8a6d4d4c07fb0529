// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>

#include "phantom/ExactExp.h"

namespace vastrelline {
namespace {

TEST(ExactExp, IsExactAtZero) { EXPECT_EQ(ExactExp(0.0), 1.0); }

TEST(ExactExp, AgreesWithTheStandardLibrary) {
    for (int i = -5000; i <= 5000; ++i) {
        const double x = 0.00997 * i;
        const double expected = std::exp(x);
        EXPECT_NEAR(ExactExp(x), expected, 1e-14 * expected) << x;
    }
}

TEST(ExactExp, StaysFiniteFarOut) {
    EXPECT_EQ(ExactExp(1e6), ExactExp(700.0));
    EXPECT_EQ(ExactExp(-1e6), ExactExp(-700.0));
    EXPECT_GT(ExactExp(-700.0), 0.0);
    EXPECT_TRUE(std::isfinite(ExactExp(700.0)));
}

}  // namespace
}  // namespace vastrelline
