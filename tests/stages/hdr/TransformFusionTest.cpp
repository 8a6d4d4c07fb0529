// SPDX-License-Identifier: Apache-2.0

// The form that the fast fusion is compared with must itself be right.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdint>
#include <numbers>
#include <random>
#include <vector>

#include "support/TransformFusion.h"

namespace vastrelline {
namespace {

using by_transforms::Spectrum;

Spectrum<double> MakeNoiseLine(int32_t length) {
    std::mt19937 random(20240603);
    Spectrum<double> line;
    for (int32_t i = 0; i < length; ++i) {
        const double real = static_cast<double>(random()) / 4294967296.0 - 0.5;
        line.emplace_back(real, static_cast<double>(random()) / 4294967296.0 - 0.5);
    }
    return line;
}

Spectrum<double> TransformBySums(const Spectrum<double>& line) {
    const size_t count = line.size();
    Spectrum<double> turns;
    for (size_t i = 0; i < count; ++i)
        turns.push_back(
            std::polar(1.0, -2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(count)));
    Spectrum<double> result;
    for (size_t k = 0; k < count; ++k) {
        double real = 0;
        double imaginary = 0;
        for (size_t x = 0, turn = 0; x < count; ++x, turn = (turn + k) % count) {
            real += line[x].real() * turns[turn].real() - line[x].imag() * turns[turn].imag();
            imaginary += line[x].real() * turns[turn].imag() + line[x].imag() * turns[turn].real();
        }
        result.emplace_back(real, imaginary);
    }
    return result;
}

class WholeImageTransformTest : public testing::TestWithParam<int32_t> {};

// As a row, as a column, and back.
TEST_P(WholeImageTransformTest, IsTheSumOverAllTurns) {
    const int32_t length = GetParam();
    const Spectrum<double> line = MakeNoiseLine(length);
    const Spectrum<double> expected = TransformBySums(line);
    const Spectrum<float> single(line.begin(), line.end());
    // Lengths of one large prime lose a little more.
    const double tolerance = 4e-6 * std::sqrt(length);
    for (const bool alongRows : {true, false}) {
        Spectrum<float> values = single;
        const int32_t width = alongRows ? length : 1;
        const int32_t height = alongRows ? 1 : length;
        by_transforms::Transform(values, width, height, alongRows, true);
        for (size_t k = 0; k < values.size(); ++k)
            ASSERT_LT(std::abs(std::complex<double>(values[k]) - expected[k]), tolerance) << k;
        by_transforms::Transform(values, width, height, alongRows, false, 1.0 / length);
        for (size_t k = 0; k < values.size(); ++k)
            ASSERT_LT(std::abs(std::complex<double>(values[k]) - line[k]), tolerance) << k;
    }
}

INSTANTIATE_TEST_SUITE_P(Long, WholeImageTransformTest, testing::Values(97, 512, 997, 1009, 1300));

TEST(WholeImageTransform, IsRightAtAllShortLengths) {
    for (int32_t length = 1; length <= 64; ++length) {
        const Spectrum<double> line = MakeNoiseLine(length);
        const Spectrum<double> expected = TransformBySums(line);
        Spectrum<float> values(line.begin(), line.end());
        by_transforms::Transform(values, length, 1, true, true);
        for (size_t k = 0; k < values.size(); ++k)
            ASSERT_LT(std::abs(std::complex<double>(values[k]) - expected[k]), 2e-5) << k << " of " << length;
    }
}

std::vector<double> Swapped(int32_t width, int32_t height) {
    const auto count = static_cast<size_t>(width) * static_cast<size_t>(height);
    Spectrum<double> from;
    for (size_t i = 0; i < count; ++i) from.emplace_back(static_cast<double>(i), 0);
    std::vector<double> to(count, -1);
    by_transforms::SwapQuadrants(from, to, width, height);
    return to;
}

TEST(QuadrantSwap, ExchangesTheHalvesOfEvenSizes) {
    EXPECT_EQ(Swapped(4, 2), (std::vector<double>{6, 7, 4, 5, 2, 3, 0, 1}));
}

// Of 3 x 3 the middle row and column are written twice, the last time by what came from the first.
TEST(QuadrantSwap, DoesNotReachTheLastRowAndColumnOfOddSizes) {
    EXPECT_EQ(Swapped(3, 3), (std::vector<double>{4, 3, -1, 1, 0, -1, -1, -1, -1}));
}

}  // namespace
}  // namespace vastrelline
