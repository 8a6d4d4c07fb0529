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
    EXPECT_EQ(DescribeRawMismatch(4336800, {1300, 1500}),
              "a raw frame of 1300x1500 has 3900000 bytes, the file has 4336800, which fit 1300x1668, "
              "1390x1560, 1560x1390 or 1668x1300 at 16 bits");
    EXPECT_EQ(DescribeRawMismatch(4337312, {1300, 1668}),
              "a raw frame of 1300x1668 has 4336800 bytes, the file has 4337312, 512 more: a head before the "
              "levels has to go first");
    EXPECT_EQ(
        DescribeRawMismatch(2168400, {1300, 1668}),
        "a raw frame of 1300x1668 has 4336800 bytes, the file has 2168400, half of them: 8 bits a pixel "
        "are not read as raw");
    EXPECT_EQ(DescribeRawMismatch(3, {2, 1}), "a raw frame of 2x1 has 4 bytes, the file has 3");
}

}  // namespace
}  // namespace vastrelline
