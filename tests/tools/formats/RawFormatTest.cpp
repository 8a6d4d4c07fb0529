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
    EXPECT_NO_THROW(TestRawSize(4336800, {1300, 1668}));
    EXPECT_THROW(TestRawSize(4336799, {1300, 1668}), std::runtime_error);
}

}  // namespace
}  // namespace vastrelline
