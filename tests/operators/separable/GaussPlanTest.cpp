// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

#include "operators/separable/GaussPlan.h"

namespace vastrelline {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::SizeIs;

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();

// 0.05, 0.25, 0.4, 0.25, 0.05, as single precision has them.
const auto kIsFixedKernel =
    ElementsAre(double{0.05F}, double{0.25F}, double{0.4F}, double{0.25F}, double{0.05F});

TEST(GaussPlan, KernelReachesTwoAndAHalfSigmas) {
    for (const auto& [sigma, taps] : {std::pair{0.4, 3U}, {0.5, 5U}, {1.0, 7U}, {3.0, 17U}, {15.0, 77U}}) {
        EXPECT_THAT(PlanGaussWrap(90, 80, sigma)->kernel, SizeIs(taps));
        EXPECT_THAT(PlanGaussReplicate(90, 80, sigma)->kernel, SizeIs(taps));
    }
}

// exp(-0), exp(-3.125) on both sides, divided by their sum 1.087874.
TEST(GaussPlan, ThreeTapsOfSigmaFourTenths) {
    EXPECT_THAT(
        PlanGaussWrap(9, 9, 0.4)->kernel,
        ElementsAre(DoubleNear(0.0403884, 1e-6), DoubleNear(0.9192242, 1e-6), DoubleNear(0.0403884, 1e-6)));
}

TEST(GaussPlan, EdgesAreThoseOfTheName) {
    EXPECT_EQ(PlanGaussWrap(9, 9, 1.0)->edges, EdgeRule::Wrap);
    EXPECT_EQ(PlanGaussReplicate(9, 9, 1.0)->edges, EdgeRule::Replicate);
}

TEST(GaussPlan, WithoutASigmaTheFixedKernelWrapsAround) {
    for (const double sigma : {0.0, -0.0, -0.3}) {
        EXPECT_THAT(PlanGaussWrap(9, 9, sigma)->kernel, kIsFixedKernel) << sigma;
        EXPECT_EQ(PlanGaussWrap(9, 9, sigma)->edges, EdgeRule::Wrap);
        EXPECT_THAT(PlanGaussReplicate(9, 9, sigma)->kernel, kIsFixedKernel) << sigma;
        EXPECT_EQ(PlanGaussReplicate(9, 9, sigma)->edges, EdgeRule::Wrap);
    }
}

// A width of -1 or less has no border to extend; that of what is no number is the smallest integer and one.
TEST(GaussPlan, HostileSigmasWithoutABorderLeaveTheFrameOrTakeTheFixedKernel) {
    for (const double sigma : {-0.5, -1e300, -kInfinite, kNotANumber}) {
        EXPECT_THAT(PlanGaussWrap(9, 9, sigma)->kernel, kIsFixedKernel) << sigma;
        EXPECT_FALSE(PlanGaussReplicate(9, 9, sigma).has_value()) << sigma;
    }
    for (const double sigma : {1e9, 1e300, kInfinite}) {
        EXPECT_FALSE(PlanGaussWrap(9, 9, sigma).has_value()) << sigma;
        EXPECT_FALSE(PlanGaussReplicate(9, 9, sigma).has_value()) << sigma;
    }
}

// The frame and a border of 2 * ceil(2.5 * sigma) in all must stay below 2^29 pixels: 16384 * 32767 does,
// 16384 * 32768 does not.
TEST(GaussPlan, ExtendedFrameStaysBelowTwoToThe29) {
    EXPECT_TRUE(PlanGaussWrap(16384 - 2, 32767 - 2, 0.4).has_value());
    EXPECT_FALSE(PlanGaussWrap(16384 - 2, 32768 - 2, 0.4).has_value());
    EXPECT_FALSE(PlanGaussReplicate(16384 - 2, 32768 - 2, 0.4).has_value());
}

// 2.5 sigma is 10843 pixels: 22986 x 23354 extended, 536815044 of 536870912. A pixel more on each side makes
// 22988 x 23356, which is 536907728.
TEST(GaussPlan, WidestKernelOfAFrameOfUsualSize) {
    for (const auto plan : {PlanGaussWrap, PlanGaussReplicate}) {
        const std::optional<GaussPlan> widest = plan(1300, 1668, 4337.2);
        ASSERT_TRUE(widest.has_value());
        EXPECT_EQ(widest->kernel.size(), size_t{21687});
        EXPECT_FALSE(plan(1300, 1668, 4337.3).has_value());
    }
}

}  // namespace
}  // namespace vastrelline
