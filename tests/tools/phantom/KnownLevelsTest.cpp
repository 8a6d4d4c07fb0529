// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>

#include "phantom/KnownLevels.h"

namespace vastrelline {
namespace {

TEST(NoisyPixel, IsRoundedToNearestWithoutNoise) {
    PhantomRandom random(1);
    EXPECT_EQ(NoisyPixel(7.0, 0.0, 255, random), 7);
    EXPECT_EQ(NoisyPixel(7.49, 0.0, 255, random), 7);
    EXPECT_EQ(NoisyPixel(7.5, 0.0, 255, random), 8);
    EXPECT_EQ(random.NextBits(), PhantomRandom(1).NextBits());  // none was taken
}

TEST(NoisyPixel, StaysWithinItsLevels) {
    PhantomRandom random(1);
    EXPECT_EQ(NoisyPixel(-3.0, 0.0, 255, random), 0);
    EXPECT_EQ(NoisyPixel(300.0, 0.0, 255, random), 255);
}

// Of n draws the mean errs by sigma / sqrt(n) and the deviation by sigma / sqrt(2 n): five of these are
// allowed.
TEST(NoisyPixel, HasTheDeviationAndThatOfItsRounding) {
    constexpr int kDraws = 100000;
    PhantomRandom random(9);
    double sum = 0.0;
    double squares = 0.0;
    for (int i = 0; i < kDraws; ++i) {
        const double off = NoisyPixel(1000.0, 3.0, 4095, random) - 1000.0;
        sum += off;
        squares += off * off;
    }
    const double expected = std::sqrt(9.0 + 1.0 / 12.0);
    EXPECT_NEAR(sum / kDraws, 0.0, 5.0 * expected / std::sqrt(kDraws));
    EXPECT_NEAR(std::sqrt(squares / kDraws), expected, 5.0 * expected / std::sqrt(2.0 * kDraws));
}

}  // namespace
}  // namespace vastrelline
