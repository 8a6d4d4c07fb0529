// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <stdexcept>

#include "formats/RawFormat.h"

namespace vastrelline {
namespace {

TEST(RawFormat, LevelsHaveTheLowByteFirst) {
    const Frame frame = DecodeRaw({0x01, 0x02, 0xFF, 0x0F}, {1, 2});
    EXPECT_EQ(frame.width, 1);
    EXPECT_EQ(frame.height, 2);
    EXPECT_EQ(frame.pixels, (std::vector<uint16_t>{0x0201, 0x0FFF}));
    EXPECT_EQ(EncodeRaw(frame), (std::vector<uint8_t>{0x01, 0x02, 0xFF, 0x0F}));
}

TEST(RawFormat, AnotherNumberOfBytesIsRefused) {
    EXPECT_THROW(DecodeRaw({}, {1, 1}), std::runtime_error);
    EXPECT_THROW(DecodeRaw({1}, {1, 1}), std::runtime_error);
    EXPECT_THROW(DecodeRaw({1, 2, 3}, {1, 1}), std::runtime_error);
    EXPECT_EQ(RawByteCount({1300, 1668}), 4336800U);
    EXPECT_EQ(RawByteCount({536870911, 1}), 1073741822U);
}

TEST(RawFormat, TellsWhyBytesAreNoFrameOfASize) {
    const RawMismatch other = DescribeRawMismatch(4336800, {1300, 1500});
    EXPECT_EQ(other.what,
              "a raw frame of 1300x1500 has 3900000 bytes, the file has 4336800, which fit 1300x1668, "
              "1390x1560, 1560x1390 or 1668x1300 at 16 bits");
    EXPECT_EQ(other.remedy, "say --size WxH");
    const RawMismatch head = DescribeRawMismatch(4337312, {1300, 1668});
    EXPECT_EQ(
        head.what,
        "a raw frame of 1300x1668 has 4336800 bytes, the file has 4337312, 512 more, as if a head stood "
        "before the levels");
    EXPECT_EQ(head.remedy, "take it away, or say --size WxH");
    const RawMismatch half = DescribeRawMismatch(2168400, {1300, 1668});
    EXPECT_EQ(
        half.what,
        "a raw frame of 1300x1668 has 4336800 bytes, the file has 2168400, half of them: those of 8 bits a "
        "pixel");
    EXPECT_EQ(half.remedy, "write levels of 16 bits, or say --size WxH");
    EXPECT_EQ(DescribeRawMismatch(3, {2, 1}).what, "a raw frame of 2x1 has 4 bytes, the file has 3");
}

}  // namespace
}  // namespace vastrelline
