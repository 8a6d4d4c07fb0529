// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <random>
#include <vector>

#include "operators/curves/ClippedRamp.h"
#include "operators/curves/LookupTable.h"
#include "pixels/FrameLimits.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

using Table = std::vector<uint16_t>;

Table Ramp(size_t levels, int32_t start, int32_t step, int32_t low, int32_t high) {
    Table table;
    for (int32_t level = 0; level < static_cast<int32_t>(levels); ++level)
        table.push_back(static_cast<uint16_t>(start + step * std::clamp(level, low, high)));
    return table;
}

TEST(ClippedRamp, TablesOfAnotherShapeAreNone) {
    for (const Table& table : {Table{}, Table{0, 2}, Table{0, 1, 2, 2, 3}, Table{0, 1, 0}, Table{5, 5, 4, 5},
                               Table{3, 3, 1, 1}, Table{0, 1, 3}})
        EXPECT_FALSE(FindClippedRamp(table)) << testing::PrintToString(table);
}

TEST(ClippedRamp, FindsItsEnds) {
    const std::optional<ClippedRamp> rising = FindClippedRamp(Table{7, 7, 8, 9, 9});
    ASSERT_TRUE(rising);
    EXPECT_EQ(rising->low, 1);
    EXPECT_EQ(rising->high, 3);
    EXPECT_EQ(rising->atLow, 7);
    EXPECT_FALSE(rising->isFalling);
    const std::optional<ClippedRamp> falling = FindClippedRamp(Table{7, 6, 5});
    ASSERT_TRUE(falling);
    EXPECT_EQ(falling->low, 0);
    EXPECT_EQ(falling->high, 2);
    EXPECT_EQ(falling->atLow, 7);
    EXPECT_TRUE(falling->isFalling);
}

// All 65536 pixels and a few more, so that vectors and what is left of them take part.
TEST(ClippedRamp, MapsEveryPixelAsTheTableDoes) {
    const Table tables[] = {{9},
                            {9, 9, 9},
                            {0, 1},
                            {1, 0},
                            {65535, 0},
                            {0, 65535},
                            Ramp(4096, 0, 1, 0, 3800),
                            Ramp(4096, 4095, -1, 0, 4095),
                            Ramp(4096, 4095, -1, 17, 3800),
                            Ramp(4096, 100, -1, 17, 3800),
                            Ramp(4096, 65000, 1, 3, 4000),
                            Ramp(65536, 0, 1, 0, 65535),
                            Ramp(65536, 65535, -1, 0, 65535),
                            Ramp(70000, 5, 1, 0, 65536)};
    Table pixels(65536 + 13);
    std::iota(pixels.begin(), pixels.end(), uint16_t{0});
    std::shuffle(pixels.begin(), pixels.end(), std::mt19937(1));
    for (const Table& table : tables) {
        SCOPED_TRACE(testing::Message() << table.size() << ' ' << table.front() << ' ' << table.back());
        const std::optional<ClippedRamp> ramp = FindClippedRamp(table);
        ASSERT_TRUE(ramp);
        Table expected = pixels;
        ApplyLookupTable(expected.data(), static_cast<int32_t>(expected.size()), 1, table);
        Table mapped = pixels;
        ApplyClippedRamp(mapped, *ramp);
        EXPECT_TRUE(mapped == expected);
    }
}

TEST(RampAbove, BeginsWhereTheCurveHasDoneWithItsOwnWay) {
    const std::optional<RampAbove> rising = FindRampAbove(Table{0, 5, 7, 3, 4, 5, 6, 6});
    ASSERT_TRUE(rising);
    EXPECT_EQ(rising->head, 3);
    EXPECT_EQ(rising->ramp.low, 3);
    EXPECT_EQ(rising->ramp.high, 6);
    EXPECT_EQ(rising->ramp.atLow, 3);
    EXPECT_FALSE(rising->ramp.isFalling);
    const std::optional<RampAbove> falling = FindRampAbove(Table{9, 9, 8, 7, 6, 5});
    ASSERT_TRUE(falling);
    EXPECT_EQ(falling->head, 1);
    EXPECT_EQ(falling->ramp.high, 5);
    EXPECT_TRUE(falling->ramp.isFalling);
}

TEST(RampAbove, IsNoneWhereItWouldBeShort) {
    for (const Table& table : {Table{}, Table{4}, Table{4, 4, 4}, Table{0, 2, 4, 6}, Table{0, 2, 4, 6, 8, 9},
                               Table{0, 9, 2, 8, 8, 8}})
        EXPECT_FALSE(FindRampAbove(table)) << testing::PrintToString(table);
}

TEST(RampAbove, MapsEveryPixelFromItsHeadOnAsTheTableDoes) {
    Table lifted = Ramp(4096, 0, 1, 0, 3700);
    for (size_t level = 1; level < 224; ++level) lifted[level] = static_cast<uint16_t>(300 - level);
    Table inverted = Ramp(4096, 4095, -1, 0, 4095);
    inverted[0] = 7;
    for (const Table& table : {lifted, inverted, Table{3, 65535, 0, 1, 2}}) {
        const std::optional<RampAbove> above = FindRampAbove(table);
        ASSERT_TRUE(above);
        for (int32_t level = above->head; level <= kTopPixel; ++level) {
            uint16_t expected = static_cast<uint16_t>(level);
            uint16_t mapped = expected;
            ApplyLookupTable(&expected, 1, 1, table);
            ApplyClippedRamp({&mapped, 1}, above->ramp);
            ASSERT_EQ(mapped, expected) << level;
        }
    }
}

TEST(ClippedRampVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(ClippedRampVariants, {"scalar", "baseline", "avx2", "avx512"});
}

TEST(ClippedRampVariants, TheLastOneRuns) {
    Table pixels(5);
    ExpectLastFormRuns(ClippedRampVariants, 1, [&] { ApplyClippedRamp(pixels, {0, 1, 2, false}); });
}

// Outputs that wrap, too.
TEST(ClippedRampVariants, GiveTheReferenceBitsAndWriteNothingElse) {
    std::mt19937 random(20240501);
    const auto any = [&] { return static_cast<uint16_t>(random()); };
    for (const size_t count : std::vector<size_t>{0, 1, 7, 8, 9, 15, 16, 17, 31, 32, 33, 63, 64, 65, 200})
        for (int32_t round = 0; round < 40; ++round) {
            const uint16_t one = any();
            const uint16_t other = any();
            const ClippedRamp ramp{std::min(one, other), std::max(one, other), any(), round % 2 != 0};
            Table before(count + 8);
            std::generate(before.begin(), before.end(), any);
            if (count > 2) before[1] = ramp.low;
            if (count > 2) before[2] = ramp.high;
            Table expected = before;
            ClippedRampVariants().front().run(expected.data(), count, ramp);
            for (const ClippedRampVariant& variant : ClippedRampVariants()) {
                Table mapped = before;
                variant.run(mapped.data(), count, ramp);
                EXPECT_EQ(mapped, expected) << variant.name << ' ' << count << ' ' << round;
            }
            EXPECT_TRUE(std::equal(before.begin() + static_cast<ptrdiff_t>(count), before.end(),
                                   expected.begin() + static_cast<ptrdiff_t>(count)));
        }
}

}  // namespace
}  // namespace vastrelline
