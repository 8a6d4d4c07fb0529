// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <limits>

#include "elementary/FloatRounding.h"

namespace vastrelline {
namespace {

TEST(HasOneFloat, NotInTheMiddleOfTwo) {
    EXPECT_TRUE(HasOneFloat(1));
    EXPECT_TRUE(HasOneFloat(1 + 0x1p-23));
    EXPECT_FALSE(HasOneFloat(1 + 0x1p-24));
    EXPECT_FALSE(HasOneFloat(-1 - 0x1p-24));
    EXPECT_TRUE(HasOneFloat(1 + 0x1p-24 + 0x1p-52));
    EXPECT_TRUE(HasOneFloat(1 + 0x1p-24 - 0x1p-52));
    EXPECT_FALSE(HasOneFloat(1 - 0x1p-25));
    EXPECT_FALSE(HasOneFloat(0x1.ffffffp127));  // from here on infinity is the nearest
    EXPECT_TRUE(HasOneFloat(std::numeric_limits<double>::infinity()));
}

TEST(HasOneFloat, NotTrustedWhereFloatsAreSubnormal) {
    EXPECT_TRUE(HasOneFloat(0));
    EXPECT_TRUE(HasOneFloat(0x1.fp-152));
    EXPECT_FALSE(HasOneFloat(0x1p-150));
    EXPECT_FALSE(HasOneFloat(-0x1p-140));
    EXPECT_TRUE(HasOneFloat(0x1p-126));
}

TEST(TellFloat, WhereTheErrorDoesNotReachTheMiddle) {
    float nearest = 0;
    EXPECT_TRUE(TellFloat(1, 0x1p-40, nearest));
    EXPECT_EQ(nearest, 1.0F);
    EXPECT_TRUE(TellFloat(1 + 0x1p-24 + 0x1p-39, 0x1p-40, nearest));
    EXPECT_EQ(nearest, 1 + 0x1p-23F);
    EXPECT_FALSE(TellFloat(1 + 0x1p-24 + 0x1p-41, 0x1p-40, nearest));
    EXPECT_FALSE(TellFloat(1 + 0x1p-24 - 0x1p-41, 0x1p-40, nearest));
}

TEST(PowerOfTwo, CoversNormalNumbers) {
    EXPECT_EQ(PowerOfTwo(0), 1);
    EXPECT_EQ(PowerOfTwo(-1022), 0x1p-1022);
    EXPECT_EQ(PowerOfTwo(1023), 0x1p1023);
}

}  // namespace
}  // namespace vastrelline
