// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <optional>

#include "stages/adaptive_unsharp/WeightTable.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr double kQuarterTurn = 1.5707963267948966;

std::optional<WeightTable> MakeTable(const Frame& frame, double start, double end, int32_t low,
                                     int32_t high) {
    return MakeSineWeightTable(frame.Data(), frame.width, frame.height, start, end, low, high);
}

// 20 levels: flat below entry 2 and from entry 20 - 10 - 1 = 9 on, a quarter of the sine in seven steps.
TEST(WeightTable, FollowsTheSineBetweenFlatEnds) {
    const std::optional<WeightTable> table =
        MakeTable(FromRows({{119, 100, 107}}), 0.0, kQuarterTurn, 10, 50);
    ASSERT_TRUE(table.has_value());
    EXPECT_EQ(table->count, 20);
    EXPECT_EQ(table->base, 100);
    ASSERT_EQ(table->values.size(), 20U);
    for (int32_t k = 0; k < 20; ++k) {
        const double expected = k <= 2 ? 0.0 : k >= 9 ? 1.0 : std::sin((k - 2) * kQuarterTurn / 7);
        EXPECT_NEAR(table->values[static_cast<size_t>(k)], expected, 1e-12) << k;
    }
}

// 10 levels, entries 0 to 10 - 5 - 1 = 4 from the top of the sine to its bottom: scaled to 1..0.
TEST(WeightTable, IsScaledToZeroAndOne) {
    const std::optional<WeightTable> table =
        MakeTable(FromRows({{0, 9}}), kQuarterTurn, 3 * kQuarterTurn, 0, 50);
    ASSERT_TRUE(table.has_value());
    const double half = std::sqrt(0.5) / 2;
    const double expected[] = {1, 0.5 + half, 0.5, 0.5 - half, 0, 0, 0, 0, 0, 0};
    for (size_t k = 0; k < 10; ++k) EXPECT_NEAR(table->values[k], expected[k], 1e-12) << k;
}

TEST(WeightTable, NeedsTenLevels) {
    EXPECT_FALSE(MakeTable(FromRows({{100, 108}}), 0.0, 1.0, 0, 50).has_value());
    EXPECT_TRUE(MakeTable(FromRows({{100, 109}}), 0.0, 1.0, 0, 50).has_value());
    EXPECT_FALSE(MakeTable(Frame(0, 2), 0.0, 1.0, 0, 50).has_value());
}

TEST(WeightTable, WeightIsTheProductAtTheTwoLevels) {
    const WeightTable a{3, 10, {0.5, 0.25, 1.0}};
    const WeightTable b{2, 0, {0.5, 3.0}};
    EXPECT_EQ(WeightAt(11, 1, a, b), 0.75);
    EXPECT_EQ(WeightAt(10, 0, a, b), 0.25);
}

}  // namespace
}  // namespace vastrelline
