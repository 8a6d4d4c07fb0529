// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>

#include "pixels/FrameLimits.h"

namespace vastrelline {
namespace {

TEST(FrameLimits, AreThoseOfThePublicHeader) {
    EXPECT_EQ(kTopPixel, UINT16_MAX);
    EXPECT_EQ(kPixelCountLimit, 536870912);
}

// 2^29 is 16384 * 32768, and 2^29 - 1 is 233 * 1103 * 2089.
TEST(IsBeyondPixelLimit, BeginsAtTheLimit) {
    EXPECT_TRUE(IsBeyondPixelLimit(16384, 32768));
    EXPECT_FALSE(IsBeyondPixelLimit(16384, 32767));
    EXPECT_FALSE(IsBeyondPixelLimit(16383, 32768));
    EXPECT_FALSE(IsBeyondPixelLimit(233, 1103 * 2089));
    EXPECT_TRUE(IsBeyondPixelLimit(1, 536870912));
    EXPECT_TRUE(IsBeyondPixelLimit(536870912, 1));
    EXPECT_FALSE(IsBeyondPixelLimit(1, 536870911));
    EXPECT_FALSE(IsBeyondPixelLimit(536870911, 1));
}

// 23170 * 23170 is 536848900, and 23171 * 23170 is 536872070.
TEST(IsBeyondPixelLimit, CountsThePadding) {
    EXPECT_FALSE(IsBeyondPixelLimit(23000, 23000, 170, 170));
    EXPECT_TRUE(IsBeyondPixelLimit(23000, 23000, 171, 170));
    EXPECT_TRUE(IsBeyondPixelLimit(23000, 23000, 170, 171));
    EXPECT_TRUE(IsBeyondPixelLimit(1, 1, INT32_MAX, 0));
}

TEST(IsBeyondPixelLimit, NoColumnOrRowIsNeverBeyond) {
    EXPECT_FALSE(IsBeyondPixelLimit(0, INT32_MAX));
    EXPECT_FALSE(IsBeyondPixelLimit(INT32_MAX, 0));
    EXPECT_FALSE(IsBeyondPixelLimit(-5, INT32_MAX));
    EXPECT_FALSE(IsBeyondPixelLimit(0, 0, 0, INT32_MAX));
    EXPECT_FALSE(IsBeyondPixelLimit(3, INT32_MAX, -3, 0));
}

// Products that 64 bits cannot hold.
TEST(IsBeyondPixelLimit, HoldsForTheLargestSides) {
    constexpr int64_t kSide = int64_t{2} * INT32_MAX;
    EXPECT_TRUE(IsBeyondPixelLimit(kSide, kSide));
    EXPECT_TRUE(IsBeyondPixelLimit(INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX));
    EXPECT_TRUE(IsBeyondPixelLimit(int64_t{1} << 32, int64_t{1} << 32));  // 2^64, which would wrap to 0
}

}  // namespace
}  // namespace vastrelline
