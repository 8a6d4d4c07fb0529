// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdint>
#include <numbers>
#include <random>
#include <vector>

#include "stages/hdr/LineTransform.h"

namespace vastrelline {
namespace {

using Line = std::vector<std::complex<double>>;

Line MakeNoiseLine(int32_t length) {
    std::mt19937 random(20240601);
    Line line;
    for (int32_t i = 0; i < length; ++i) {
        const double real = static_cast<double>(random()) / 4294967296.0 - 0.5;
        line.emplace_back(real, static_cast<double>(random()) / 4294967296.0 - 0.5);
    }
    return line;
}

Line TransformBySums(const Line& line) {
    const size_t count = line.size();
    Line turns;
    for (size_t i = 0; i < count; ++i) {
        turns.push_back(
            std::polar(1.0, -2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(count)));
    }
    Line result(count);
    for (size_t k = 0; k < count; ++k)
        for (size_t x = 0; x < count; ++x) result[k] += line[x] * turns[k * x % count];
    return result;
}

TEST(LineTransform, IsTheSumOverAllTurns) {
    for (const int32_t length : {1, 2, 3, 4, 5, 7, 8, 9, 16, 17, 31, 64, 97, 100, 211, 257}) {
        const Line line = MakeNoiseLine(length);
        const Line expected = TransformBySums(line);
        const Line actual = LineTransform(length).Forward(line);
        ASSERT_EQ(actual.size(), expected.size());
        for (size_t k = 0; k < expected.size(); ++k)
            EXPECT_LT(std::abs(actual[k] - expected[k]), 1e-12) << k << " of " << length;
    }
}

TEST(LineTransform, FourEntriesByHand) {
    const Line actual = LineTransform(4).Forward({1, 2, 3, 4});
    const Line expected = {{10, 0}, {-2, 2}, {-2, 0}, {-2, -2}};
    for (size_t k = 0; k < 4; ++k) EXPECT_LT(std::abs(actual[k] - expected[k]), 1e-14) << k;
}

TEST(UnitRoot, TurnsOnceInItsCount) {
    EXPECT_EQ(UnitRoot(0, 5), (std::complex<double>{1, 0}));
    EXPECT_LT(std::abs(UnitRoot(1, 4) - std::complex<double>{0, 1}), 1e-15);
    EXPECT_EQ(UnitRoot(7, 5), UnitRoot(2, 5));
    EXPECT_EQ(UnitRoot(uint64_t{1} << 62, 3), UnitRoot(1, 3));  // 4 leaves 1, and so do its powers
}

}  // namespace
}  // namespace vastrelline
