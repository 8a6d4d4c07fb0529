// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/PngFrame.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

// Three columns and two rows of 16 bits: 0 1 255 / 256 4095 65535. Each chunk ends with its CRC-32; each row
// begins with a 0, for none of the filters, before all is deflated.
constexpr unsigned char kSixteenBits[] = {
    // The signature.
    0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n',
    // 3 x 2 pixels of 16 bits, grey.
    0, 0, 0, 13, 'I', 'H', 'D', 'R', 0, 0, 0, 3, 0, 0, 0, 2, 16, 0, 0, 0, 0, 0xE8, 0x8F, 0xE5, 0x85,
    // The pixels.
    0, 0, 0, 21, 'I', 'D', 'A', 'T', 0x78, 0xDA, 0x63, 0x60, 0x60, 0x60, 0x60, 0x64, 0xF8, 0x0F, 0xC4, 0xFC,
    0xFF, 0xFF, 0xFF, 0x07, 0x00, 0x0E, 0x4C, 0x04, 0x0E, 0xB0, 0xB3, 0x95, 0x93,
    // The end.
    0, 0, 0, 0, 'I', 'E', 'N', 'D', 0xAE, 0x42, 0x60, 0x82};

// Two columns and one row of 8 bits, built alike.
constexpr unsigned char kEightBits[] = {
    // The signature.
    0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n',
    // 2 x 1 pixels of 8 bits, grey.
    0, 0, 0, 13, 'I', 'H', 'D', 'R', 0, 0, 0, 2, 0, 0, 0, 1, 8, 0, 0, 0, 0, 0xD1, 0x49, 0x20, 0x56,
    // The pixels.
    0, 0, 0, 11, 'I', 'D', 'A', 'T', 0x78, 0xDA, 0x63, 0x60, 0x64, 0x02, 0x00, 0x00, 0x07, 0x00, 0x04, 0xE5,
    0xED, 0x94, 0xCF,
    // The end.
    0, 0, 0, 0, 'I', 'E', 'N', 'D', 0xAE, 0x42, 0x60, 0x82};

template <size_t count>
std::string_view Text(const unsigned char (&bytes)[count]) {
    return {reinterpret_cast<const char*>(bytes), count};
}

class PngFrame : public testing::Test {
protected:
    Frame Read(std::string_view bytes) const {
        WriteBytes(folder_.Path() / "frame.png", bytes);
        return ReadPngFrame(folder_.Path() / "frame.png");
    }

    TemporaryFolder folder_;
};

TEST_F(PngFrame, HoldsEveryLevelAsItStandsInTheFile) {
    EXPECT_THAT(Read(Text(kSixteenBits)), EqualsFrame(FromRows({{0, 1, 255}, {256, 4095, 65535}})));
}

TEST_F(PngFrame, IsNotMadeOfEightBits) { EXPECT_THROW(Read(Text(kEightBits)), std::runtime_error); }

TEST_F(PngFrame, IsNotMadeOfADamagedFile) {
    std::string damaged(Text(kSixteenBits));
    damaged.at(damaged.find("IDAT") + 6) ^= 1;
    EXPECT_THROW(Read(damaged), std::runtime_error);
    EXPECT_THROW(Read(Text(kSixteenBits).substr(0, 50)), std::runtime_error);
    EXPECT_THROW(Read(""), std::runtime_error);
}

TEST_F(PngFrame, IsNotMadeOfAMissingFile) {
    EXPECT_THROW(ReadPngFrame(folder_.Path() / "none.png"), std::runtime_error);
}

}  // namespace
}  // namespace vastrelline
