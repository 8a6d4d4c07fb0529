// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <random>

#include "operators/tile_equalise/SumDivision.h"

namespace vastrelline {
namespace {

// Around multiples of the divisor, where a quotient that is not exact shows first.
void ExpectExact(uint32_t divisor, uint16_t max, uint64_t multiple) {
    const SumDivision division = MakeSumDivision(divisor, max);
    for (const uint64_t sum : {multiple - 1, multiple, multiple + 1}) {
        const auto held = static_cast<uint32_t>(sum);
        if (sum > uint64_t{divisor} * max) continue;
        ASSERT_EQ(DivideSum(held, division), held / divisor) << held << " / " << divisor << ", " << max;
    }
}

TEST(SumDivision, TakesTheCheapestRule) {
    EXPECT_EQ(MakeSumDivision(1, 65535).rule, DivisionRule::Shift);
    EXPECT_EQ(MakeSumDivision(65536, 65535).rule, DivisionRule::Shift);
    EXPECT_EQ(MakeSumDivision(uint32_t{1} << 31U, 65535).rule, DivisionRule::Shift);
    EXPECT_EQ(MakeSumDivision(3, 65535).rule, DivisionRule::Product);
    EXPECT_EQ(MakeSumDivision(32767, 65535).rule, DivisionRule::Product);
    // 90000 * 23860 lies below 2^31, 90000 * 23861 above.
    EXPECT_EQ(MakeSumDivision(90000, 23860).rule, DivisionRule::Product);
    EXPECT_EQ(MakeSumDivision(90000, 23861).rule, DivisionRule::WideProduct);
}

TEST(SumDivision, EverySumHasTheQuotientOfTheDivision) {
    std::mt19937 random(20240520);
    for (uint32_t divisor = 1; divisor < 300; ++divisor)
        for (uint64_t level = 1; level <= 65535; level += 97) ExpectExact(divisor, 65535, divisor * level);
    for (int i = 0; i < 20000; ++i) {
        const uint32_t divisor = 1 + (static_cast<uint32_t>(random()) >> 1U) % (uint32_t{1} << (1 + i % 31));
        const auto max = static_cast<uint16_t>(random());
        for (const uint64_t level : {uint64_t{1}, uint64_t{max / 2U}, uint64_t{max - 1U}, uint64_t{max}})
            ExpectExact(divisor, max, divisor * level);
    }
}

// The sums of one divisor around the border of two rules, and beyond 32 bits, all multiples of it.
TEST(SumDivision, BothSidesOfTheBordersAreExact) {
    for (const uint32_t divisor : {32769U, 33124U, 33489U, 65535U, 65537U, 89401U, 90000U, 1000001U}) {
        for (const uint64_t border : {uint64_t{1} << 31U, uint64_t{1} << 32U}) {
            const uint64_t below = (border - 1) / divisor;
            for (const uint64_t max : {below, below + 1}) {
                if (max > 65535) continue;
                for (uint64_t level = 1; level <= max; ++level)
                    ExpectExact(divisor, static_cast<uint16_t>(max), divisor * level);
            }
        }
        for (uint64_t level = 1; level <= 65535; ++level) ExpectExact(divisor, 65535, divisor * level);
    }
}

}  // namespace
}  // namespace vastrelline
