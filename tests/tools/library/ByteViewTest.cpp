// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

#include "library/ByteView.h"

namespace vastrelline {
namespace {

const std::vector<uint8_t> kBytes = {0x01, 0x02, 0x03, 0x84, 0x05, 0x06, 0x07, 0x88};

TEST(ByteView, ReadsNumbersInBothOrders) {
    const ByteView low(kBytes);
    const ByteView high(kBytes, ByteOrder::HighFirst);
    EXPECT_EQ(low.Number(0, 1), 0x01U);
    EXPECT_EQ(low.Number(2, 2), 0x8403U);
    EXPECT_EQ(high.Number(2, 2), 0x0384U);
    EXPECT_EQ(low.Number(0, 8), 0x8807060584030201U);
    EXPECT_EQ(high.Number(0, 8), 0x0102038405060788U);
}

TEST(ByteView, GivesNothingOutsideOfTheBytes) {
    constexpr uint64_t kMost = std::numeric_limits<uint64_t>::max();
    const ByteView view(kBytes);
    EXPECT_TRUE(view.Number(4, 4));
    EXPECT_FALSE(view.Number(5, 4));
    EXPECT_FALSE(view.Number(8, 1));
    EXPECT_FALSE(view.Number(kMost, 1));
    EXPECT_FALSE(view.Number(kMost - 1, 4));
    EXPECT_TRUE(view.Piece(8, 0));
    EXPECT_FALSE(view.Piece(1, kMost));
    EXPECT_FALSE(view.Piece(kMost, kMost));
}

TEST(ByteView, KeepsTheOrderInItsPieces) {
    const auto piece = ByteView(kBytes, ByteOrder::HighFirst).Piece(2, 3);
    ASSERT_TRUE(piece);
    EXPECT_EQ(piece->Size(), 3U);
    EXPECT_EQ(piece->Number(0, 2), 0x0384U);
    EXPECT_FALSE(piece->Number(2, 2));
    EXPECT_EQ(piece->Text(), "\x03\x84\x05");
}

}  // namespace
}  // namespace vastrelline
