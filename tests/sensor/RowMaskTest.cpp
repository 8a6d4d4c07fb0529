// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <vector>

#include "sensor/RowMask.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskFrames.h"

namespace vastrelline {
namespace {

std::vector<int32_t> MarkedRowsOf(const RowMask& mask) {
    return {mask.MarkedRows().begin(), mask.MarkedRows().end()};
}

TEST(RowMask, HidesNothingAtFirst) {
    const RowMask mask(3, 2);
    EXPECT_EQ(mask.Width(), 3);
    EXPECT_EQ(mask.Height(), 2);
    EXPECT_TRUE(mask.MarkedRows().empty());
}

TEST(RowMask, RowsAreZeroUntilTheyAreMarkedAndKeepTheirMarks) {
    RowMask mask(3, 4);
    EXPECT_EQ(std::count(mask.Mark(2), mask.Mark(2) + 3, 0), 3);
    mask.Mark(2)[1] = 255;
    mask.Mark(0)[2] = 1;
    mask.Mark(2)[0] = 7;
    EXPECT_EQ(MarkedRowsOf(mask), (std::vector<int32_t>{2, 0}));
    EXPECT_THAT(FrameOfMask(mask), EqualsFrame(FromRows({{0, 0, 1}, {0, 0, 0}, {7, 255, 0}, {0, 0, 0}})));
}

// More rows than are kept together, from the bottom up.
TEST(RowMask, RowsStayWhereTheyAre) {
    constexpr int32_t kWidth = 5;
    constexpr int32_t kHeight = 200;
    RowMask mask(kWidth, kHeight);
    std::vector<uint16_t*> rows(kHeight);
    for (int32_t y = kHeight - 1; y >= 0; --y) {
        rows[static_cast<size_t>(y)] = mask.Mark(y);
        std::fill_n(mask.Mark(y), kWidth, static_cast<uint16_t>(y));
    }
    for (int32_t y = 0; y < kHeight; ++y) {
        EXPECT_EQ(mask.Mark(y), rows[static_cast<size_t>(y)]);
        EXPECT_EQ(std::count(mask.Row(y), mask.Row(y) + kWidth, static_cast<uint16_t>(y)), kWidth) << y;
    }
}

TEST(RowMask, RefusesSizesThatNoFrameHas) {
    EXPECT_THROW(RowMask(-1, 5), std::length_error);
    EXPECT_THROW(RowMask(5, -1), std::length_error);
    EXPECT_THROW(RowMask(0x10000, 0x10000), std::length_error);
    EXPECT_EQ(RowMask(0, 3).Height(), 3);
}

}  // namespace
}  // namespace vastrelline
