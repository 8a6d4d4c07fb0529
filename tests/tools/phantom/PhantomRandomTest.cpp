// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>

#include "phantom/PhantomRandom.h"

namespace vastrelline {
namespace {

constexpr int kDraws = 200000;

struct Moments {
    double mean;
    double variance;
};

template <typename Draw>
Moments MomentsOf(Draw draw) {
    double sum = 0.0;
    double squares = 0.0;
    for (int i = 0; i < kDraws; ++i) {
        const double value = draw();
        sum += value;
        squares += value * value;
    }
    const double mean = sum / kDraws;
    return {mean, squares / kDraws - mean * mean};
}

TEST(PhantomRandom, GivesThePublishedNumbersOfItsGenerator) {
    PhantomRandom random(1234567);
    EXPECT_EQ(random.NextBits(), 6457827717110365317U);
    EXPECT_EQ(random.NextBits(), 3203168211198807973U);
    EXPECT_EQ(random.NextBits(), 9817491932198370423U);
}

TEST(PhantomRandom, UniformNumbersFillTheirRange) {
    PhantomRandom random(1);
    const Moments moments = MomentsOf([&] {
        const double value = random.Uniform();
        EXPECT_GE(value, 0.0);
        EXPECT_LT(value, 1.0);
        return value;
    });
    EXPECT_NEAR(moments.mean, 0.5, 0.003);
    EXPECT_NEAR(moments.variance, 1.0 / 12.0, 0.001);
}

TEST(PhantomRandom, NormalNumbersHaveTheirMoments) {
    PhantomRandom random(2);
    const Moments moments = MomentsOf([&] { return random.Normal(); });
    EXPECT_NEAR(moments.mean, 0.0, 0.01);
    EXPECT_NEAR(moments.variance, 1.0, 0.015);
}

class PoissonTest : public testing::TestWithParam<double> {};

TEST_P(PoissonTest, MeanAndVarianceAreEqual) {
    const double mean = GetParam();
    PhantomRandom random(3);
    const Moments moments = MomentsOf([&] {
        const double count = random.Poisson(mean);
        EXPECT_GE(count, 0.0);
        EXPECT_EQ(count, std::floor(count));
        return count;
    });
    EXPECT_NEAR(moments.mean, mean, 5.0 * std::sqrt(mean / kDraws));
    EXPECT_NEAR(moments.variance, mean, 0.02 * mean + 0.1);  // rounding adds 1/12 to the large ones
}

INSTANTIATE_TEST_SUITE_P(Means, PoissonTest, testing::Values(0.1, 1.0, 12.5, 39.9, 40.0, 20000.0));

TEST(PhantomRandom, NothingIsExpectedOfNothing) {
    PhantomRandom random(4);
    EXPECT_EQ(random.Poisson(0.0), 0.0);
    EXPECT_EQ(random.Poisson(-1.0), 0.0);
    EXPECT_EQ(random.Poisson(std::nan("")), 0.0);
}

TEST(PhantomRandom, StirredBitsTellTheirPlacesApart) {
    EXPECT_EQ(StirBits(1, 2, 3), StirBits(1, 2, 3));
    EXPECT_NE(StirBits(1, 2, 3), StirBits(1, 3, 2));
    EXPECT_NE(StirBits(1, 2, 3), StirBits(2, 2, 3));
    EXPECT_NE(StirBits(1, -2, 3), StirBits(1, 2, 3));
}

}  // namespace
}  // namespace vastrelline
