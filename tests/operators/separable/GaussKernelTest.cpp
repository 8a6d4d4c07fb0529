// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <stdexcept>
#include <vector>

#include "operators/separable/GaussKernel.h"

namespace vastrelline {
namespace {

struct MaskSizeCase {
    const char* name;
    double sigma;
    int32_t size;
};

class GaussMaskSizeTest : public testing::TestWithParam<MaskSizeCase> {};

TEST_P(GaussMaskSizeTest, IsTwiceTheReachAndOne) {
    EXPECT_EQ(GetParam().size, GaussMaskSize(GetParam().sigma));
}

constexpr int32_t kSmallest = std::numeric_limits<int32_t>::min();

// 2 * ceil(2.5 * sigma) + 1, worked out by hand.
INSTANTIATE_TEST_SUITE_P(Sigmas, GaussMaskSizeTest,
                         testing::Values(MaskSizeCase{"None", 0, 1}, MaskSizeCase{"Small", 0.4, 3},
                                         MaskSizeCase{"JustAboveOneStep", 0.41, 5}, MaskSizeCase{"One", 1, 7},
                                         MaskSizeCase{"OneAndAHalf", 1.5, 9}, MaskSizeCase{"Two", 2, 11},
                                         MaskSizeCase{"Three", 3, 17}, MaskSizeCase{"Six", 6, 31},
                                         MaskSizeCase{"Fifteen", 15, 77},
                                         MaskSizeCase{"JustBelowZero", -0.1, 1},
                                         MaskSizeCase{"Negative", -1, -3},
                                         MaskSizeCase{"NotANumber", std::nan(""), kSmallest + 1},
                                         MaskSizeCase{"Infinite", INFINITY, kSmallest + 1},
                                         MaskSizeCase{"BeyondThirtyTwoBits", 1e9, kSmallest + 1}),
                         [](const auto& test) { return test.param.name; });

TEST(GaussKernel, TapsAreSymmetricalAndAddUpToOne) {
    for (const double sigma : {0.3, 0.5, 1.0, 2.5, 15.0}) {
        SCOPED_TRACE(sigma);
        int32_t size = 0;
        const std::vector<double> kernel = MakeGaussKernel(size, sigma);
        ASSERT_EQ(static_cast<size_t>(size), kernel.size());
        EXPECT_NEAR(1.0, std::accumulate(kernel.begin(), kernel.end(), 0.0), 1e-15);
        for (size_t i = 0; i < kernel.size(); ++i) EXPECT_EQ(kernel[i], kernel[kernel.size() - 1 - i]);
    }
}

// Two neighbouring taps at sigma 1 stand as 1 to exp(-1/2), whatever the norm.
TEST(GaussKernel, NeighboursStandAsTheGaussianDoes) {
    int32_t size = 0;
    const std::vector<double> kernel = MakeGaussKernel(size, 1.0);
    ASSERT_EQ(7, size);
    EXPECT_NEAR(std::exp(-0.5), kernel[4] / kernel[3], 1e-15);
    EXPECT_NEAR(std::exp(-2.0), kernel[5] / kernel[3], 1e-15);
    EXPECT_NEAR(std::exp(-4.5), kernel[6] / kernel[3], 1e-15);
}

// Squares of up to 62500 do not fit 32 bits; the outermost taps are still the smallest, and above 0.
TEST(GaussKernel, VeryWideKernelFallsToItsEnds) {
    int32_t size = 0;
    const std::vector<double> kernel = MakeGaussKernel(size, 25000.0);
    ASSERT_EQ(125001, size);
    EXPECT_NEAR(std::exp(-0.5 * 2.5 * 2.5), kernel.front() / kernel[62500], 1e-12);
    EXPECT_NEAR(std::exp(-0.5 * 4.0), kernel[12500] / kernel[62500], 1e-12);  // 50000 from the middle
}

TEST(GaussKernel, SigmaWithoutAKernelIsRefused) {
    int32_t size = 5;
    EXPECT_THROW(MakeGaussKernel(size, -1.0), std::length_error);
    EXPECT_THROW(MakeGaussKernel(size, std::nan("")), std::length_error);
    EXPECT_EQ(5, size);
}

}  // namespace
}  // namespace vastrelline
