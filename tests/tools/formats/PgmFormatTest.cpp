// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "formats/PgmFormat.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;

std::vector<uint8_t> Bytes(std::string_view text) { return {text.begin(), text.end()}; }

TEST(PgmFormat, TwoByteLevelsHaveTheHighByteFirst) {
    const Frame frame = DecodePgm(Bytes("P5\n2 1\n4095\n\x01\x02\x0F\xFF"s));
    EXPECT_EQ(frame.width, 2);
    EXPECT_EQ(frame.height, 1);
    EXPECT_EQ(frame.pixels, (std::vector<uint16_t>{0x0102, 0x0FFF}));
}

TEST(PgmFormat, OneByteLevelsAreTakenAsTheyAre) {
    const Frame frame = DecodePgm(Bytes("P5 1 3 255 \x00\x07\xFF"s));
    EXPECT_EQ(frame.width, 1);
    EXPECT_EQ(frame.height, 3);
    EXPECT_EQ(frame.pixels, (std::vector<uint16_t>{0, 7, 255}));
}

TEST(PgmFormat, TheHeadMayHoldCommentsAndAnyBlanks) {
    const Frame frame = DecodePgm(Bytes("P5# made by hand\n\t1\r\n#9 9\n 1 \n256\n\x01\x00"s));
    EXPECT_EQ(frame.pixels, (std::vector<uint16_t>{256}));
}

TEST(PgmFormat, ALevelThatLooksLikeABlankIsALevel) {
    EXPECT_EQ(DecodePgm(Bytes("P5 2 1 255\n\n "s)).pixels, (std::vector<uint16_t>{10, 32}));
}

TEST(PgmFormat, DamagedFilesAreRefused) {
    for (const std::string& text : {""s,
                                    "P5"s,
                                    "P2\n1 1\n255\n7"s,
                                    "P55 1 255\n7"s,
                                    "P5\n1"s,
                                    "P5\n1 1"s,
                                    "P5\n1 1 255"s,
                                    "P5\nx 1 255\n7"s,
                                    "P5\n-1 1 255\n7"s,
                                    "P5\n0 1 255\n"s,
                                    "P5\n1 0 255\n"s,
                                    "P5\n1 1 0\n7"s,
                                    "P5\n1 1 65536\n77"s,
                                    "P5\n1 1 255\n"s,
                                    "P5\n1 1 255\n77"s,
                                    "P5\n1 1 256\n7"s,
                                    "P5\n1 1 256\n777"s,
                                    "P5\n1 1 255x7"s,
                                    "P5#"s,
                                    "P5\n99999999999 1 255\n7"s,
                                    "P5\n2147483647 2147483647 65535\n7"s,
                                    "P5\n536870911 1 65535\n7"s})
        EXPECT_THROW(DecodePgm(Bytes(text)), std::runtime_error) << text;
}

TEST(PgmFormat, WritesTheTopLevelIntoTheHead) {
    const std::vector<uint8_t> bytes = EncodePgm({2, 1, {1, 4095}}, 4095);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "P5\n2 1\n4095\n\x00\x01\x0F\xFF"s);
}

TEST(PgmFormat, ATopLevelThatDoesNotFitBecomesTheLargest) {
    const std::string above(1, '\x10');
    for (const int32_t topLevel : {4095, 255, 1, 0, -1, 65535, 100000}) {
        const std::vector<uint8_t> bytes = EncodePgm({1, 1, {4096}}, topLevel);
        EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "P5\n1 1\n65535\n"s + above + '\0') << topLevel;
    }
}

}  // namespace
}  // namespace vastrelline
