// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <vector>

#include "stages/adaptive_smoothing/SavgolKernel.h"

namespace vastrelline {
namespace {

using testing::DoubleNear;
using testing::Each;
using testing::Pointwise;

std::vector<double> DividedBy(std::vector<double> numerators, double denominator) {
    for (double& value : numerators) value /= denominator;
    return numerators;
}

std::vector<double> Kernel(int32_t mask, int32_t order) {
    std::vector<double> taps(static_cast<size_t>(mask % 2 == 0 ? mask + 1 : mask), -7.0);
    SavgolKernel(taps.data(), mask, order);
    return taps;
}

// The integers of the tables that chemists smooth spectra with.
struct TableCase {
    const char* name;
    int32_t mask;
    int32_t order;
    std::vector<double> numerators;
    double denominator;
};

class SavgolKernelTest : public testing::TestWithParam<TableCase> {};

TEST_P(SavgolKernelTest, GivesTheTapsOfTheTables) {
    const TableCase& c = GetParam();
    EXPECT_THAT(Kernel(c.mask, c.order),
                Pointwise(testing::DoubleNear(1e-11), DividedBy(c.numerators, c.denominator)));
}

const std::vector<double> kQuartic15 = {2145,  -2860, -2937, -165, 3755,  7500,  10125, 11063,
                                        10125, 7500,  3755,  -165, -2937, -2860, 2145};

INSTANTIATE_TEST_SUITE_P(
    Tables, SavgolKernelTest,
    testing::Values(TableCase{"Mean5", 5, 0, {1, 1, 1, 1, 1}, 5}, TableCase{"Linear3", 3, 1, {1, 1, 1}, 3},
                    TableCase{"Quadratic5", 5, 2, {-3, 12, 17, 12, -3}, 35},
                    TableCase{"Cubic5", 5, 3, {-3, 12, 17, 12, -3}, 35},
                    TableCase{"Quadratic7", 7, 2, {-2, 3, 6, 7, 6, 3, -2}, 21},
                    TableCase{"Quadratic9", 9, 2, {-21, 14, 39, 54, 59, 54, 39, 14, -21}, 231},
                    TableCase{"Quartic7", 7, 4, {5, -30, 75, 131, 75, -30, 5}, 231},
                    TableCase{"Quartic9", 9, 4, {15, -55, 30, 135, 179, 135, 30, -55, 15}, 429},
                    TableCase{"Quartic15", 15, 4, kQuartic15, 46189},
                    // As many degrees as the window carries: the polynomial goes through every pixel.
                    TableCase{"Quartic5", 5, 4, {0, 0, 1, 0, 0}, 1},
                    TableCase{"EvenMaskMakesOneTapMore", 4, 2, {-3, 12, 17, 12, -3}, 35},
                    TableCase{"TooManyDegrees", 3, 4, {1, 1, 1}, 1},
                    TableCase{"TooManyDegreesForAnEvenMask", 2, 3, {1, 1, 1}, 1},
                    TableCase{"MostDegreesOfAll", 3, INT_MAX, {1, 1, 1}, 1},
                    TableCase{"NegativeDegree", 3, -1, {1, 1, 1}, 1},
                    TableCase{"LeastDegree", 3, INT_MIN, {1, 1, 1}, 1}, TableCase{"OneTap", 1, 0, {1}, 1}),
    [](const auto& test) { return test.param.name; });

TEST(SavgolKernel, TapsAreSymmetricalAndAddUpToOne) {
    for (const int32_t mask : {5, 15, 31, 101}) {
        const std::vector<double> taps = Kernel(mask, 4);
        EXPECT_NEAR(std::accumulate(taps.begin(), taps.end(), 0.0), 1.0, 1e-9) << mask;
        EXPECT_THAT(std::vector<double>(taps.rbegin(), taps.rend()), Pointwise(DoubleNear(1e-9), taps))
            << mask;
    }
}

// A straight line through four pixels at -1, 0, 1 and 2: mean 0.5, squares of the distances 5, so that pixel
// k counts 1/4 + (0 - 0.5) * (k - 0.5) / 5 at 0, and (k - 0.5) / 5 for the slope.
TEST(SavgolCoefficients, UnequalSidesComeInWrapAroundOrder) {
    std::vector<double> taps(4);
    ASSERT_EQ(SavgolCoefficients(taps.data(), 4, 1, 2, 0, 1), 1);
    EXPECT_THAT(taps, Pointwise(DoubleNear(1e-14), {0.3, 0.4, 0.1, 0.2}));
    ASSERT_EQ(SavgolCoefficients(taps.data(), 4, 1, 2, 1, 1), 1);
    EXPECT_THAT(taps, Pointwise(DoubleNear(1e-14), {-0.1, -0.3, 0.3, 0.1}));
}

TEST(SavgolCoefficients, RoomBeyondTheWindowStaysZero) {
    std::vector<double> taps(6, -7.0);
    ASSERT_EQ(SavgolCoefficients(taps.data(), 6, 1, 1, 0, 0), 1);
    EXPECT_THAT(taps, Pointwise(DoubleNear(1e-14), {1 / 3.0, 1 / 3.0, 0.0, 0.0, 0.0, 1 / 3.0}));
}

TEST(SavgolCoefficients, UnusableArgumentsGiveZeros) {
    struct Arguments {
        int32_t tapCount, left, right, derivative, order;
    };
    const Arguments unusable[] = {
        {4, 2, 2, 0, 2}, {5, -1, 2, 0, 1}, {5, 2, -1, 0, 1}, {5, 2, 2, 3, 2},
        {5, 2, 2, 0, 5}, {5, 2, 2, -1, 2}, {5, 2, 2, 0, -1}, {5, INT_MAX, INT_MAX, 0, 2}};
    for (const Arguments& a : unusable) {
        SCOPED_TRACE(testing::Message() << a.tapCount << ' ' << a.left << ' ' << a.right << ' '
                                        << a.derivative << ' ' << a.order);
        std::vector<double> taps(static_cast<size_t>(a.tapCount), -7.0);
        EXPECT_EQ(SavgolCoefficients(taps.data(), a.tapCount, a.left, a.right, a.derivative, a.order), 0);
        EXPECT_THAT(taps, Each(0.0));
    }
}

// On both sides of the degree from which on nothing is computed: 200^133 is a double, 200^134 is not.
TEST(SavgolCoefficients, PowersBeyondDoublesGiveNoNumbers) {
    for (const int32_t order : {134, 135, 400}) {
        std::vector<double> taps(401);
        ASSERT_EQ(SavgolCoefficients(taps.data(), 401, 200, 200, 0, order), 1);
        EXPECT_TRUE(std::all_of(taps.begin(), taps.end(), [](double tap) { return std::isnan(tap); }))
            << order;
    }
}

TEST(UnwrapKernel, PutsTheLeftmostTapFirst) {
    // Named by position: 0, -1, -2, then 3, 2, 1 from the end backwards.
    std::vector<double> taps = {0, -1, -2, 3, 2, 1};
    UnwrapKernel(taps.data(), 6, 2, 3);
    EXPECT_EQ(taps, (std::vector<double>{-2, -1, 0, 1, 2, 3}));
}

// exp(-16) = 0.000000112535, exp(-4) = 0.0183156, exp(-64/9) = 0.000816, exp(-16/9) = 0.169013,
// exp(-1) = 0.367879
TEST(SavgolWindow, FallsToExpOfMinusFourAtTheEnds) {
    const std::vector<std::vector<double>> windows = {
        {1.12535162e-7, 1},
        {0.018315639, 1, 0.018315639},
        {0.000815988, 0.169013315, 1, 0.169013315},
        {0.018315639, 0.367879441, 1, 0.367879441, 0.018315639},
    };
    for (const std::vector<double>& window : windows) {
        std::vector<double> weights(window.size());
        SavgolWindow(weights.data(), static_cast<int32_t>(window.size()));
        const double sum = std::accumulate(window.begin(), window.end(), 0.0);
        EXPECT_THAT(weights, Pointwise(DoubleNear(1e-7), DividedBy(window, sum)));
        EXPECT_NEAR(std::accumulate(weights.begin(), weights.end(), 0.0), 1.0, 1e-15);
    }
}

}  // namespace
}  // namespace vastrelline
