// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>

#include "formats/PngFormat.h"

namespace vastrelline {
namespace {

void AppendBig(std::vector<uint8_t>& bytes, uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<uint8_t>(value >> shift));
}

// The checksum of PNG blocks, bit by bit.
uint32_t Checksum(const std::vector<uint8_t>& bytes) {
    uint32_t rest = 0xFFFFFFFF;
    for (const uint8_t byte : bytes) {
        rest ^= byte;
        for (int bit = 0; bit < 8; ++bit) rest = (rest >> 1) ^ ((rest & 1) != 0 ? 0xEDB88320U : 0U);
    }
    return ~rest;
}

void AppendBlock(std::vector<uint8_t>& file, const std::string& name, const std::vector<uint8_t>& data) {
    AppendBig(file, static_cast<uint32_t>(data.size()));
    std::vector<uint8_t> body(name.begin(), name.end());
    body.insert(body.end(), data.begin(), data.end());
    file.insert(file.end(), body.begin(), body.end());
    AppendBig(file, Checksum(body));
}

// A PNG file with the given rows (each with its filter byte), stored without compression.
std::vector<uint8_t> HandMadePng(uint32_t width, uint32_t height, uint8_t bits, uint8_t colour,
                                 const std::vector<uint8_t>& rows, uint8_t interlacing = 0) {
    std::vector<uint8_t> file{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    std::vector<uint8_t> head;
    AppendBig(head, width);
    AppendBig(head, height);
    head.insert(head.end(), {bits, colour, 0, 0, interlacing});
    AppendBlock(file, "IHDR", head);
    const auto length = static_cast<uint16_t>(rows.size());
    std::vector<uint8_t> data{0x78,
                              0x01,
                              0x01,
                              static_cast<uint8_t>(length & 0xFF),
                              static_cast<uint8_t>(length >> 8),
                              static_cast<uint8_t>(~length & 0xFF),
                              static_cast<uint8_t>((~length >> 8) & 0xFF)};
    data.insert(data.end(), rows.begin(), rows.end());
    uint32_t a = 1;
    uint32_t b = 0;
    for (const uint8_t byte : rows) {
        a = (a + byte) % 65521;
        b = (b + a) % 65521;
    }
    AppendBig(data, (b << 16) | a);
    AppendBlock(file, "IDAT", data);
    AppendBlock(file, "IEND", {});
    return file;
}

TEST(PngFormat, ReadsGreyOf16Bits) {
    const Frame frame = DecodePng(HandMadePng(2, 2, 16, 0, {0, 0x01, 0x02, 0x03, 0x04, 0, 0xFF, 0xFE, 0, 0}));
    EXPECT_EQ(frame.width, 2);
    EXPECT_EQ(frame.height, 2);
    EXPECT_EQ(frame.pixels, (std::vector<uint16_t>{0x0102, 0x0304, 0xFFFE, 0}));
}

TEST(PngFormat, ReadsGreyOf8BitsAsItIs) {
    const Frame frame = DecodePng(HandMadePng(3, 1, 8, 0, {0, 0, 7, 255}));
    EXPECT_EQ(frame.pixels, (std::vector<uint16_t>{0, 7, 255}));
}

// Of 2 x 2 pixels the first pass holds the one at the top left, the sixth its neighbour, the last the lower
// row.
TEST(PngFormat, ReadsInterlacedRows) {
    const Frame frame = DecodePng(HandMadePng(2, 2, 8, 0, {0, 1, 0, 2, 0, 3, 4}, 1));
    EXPECT_EQ(frame.pixels, (std::vector<uint16_t>{1, 2, 3, 4}));
}

// A block of text that tells of 2 GiB - 1, of which no byte is there, must not take memory for them.
TEST(PngFormat, ABlockLongerThanItsFileIsRefusedBeforeMemoryIsTaken) {
    std::vector<uint8_t> file = HandMadePng(1, 1, 8, 0, {0, 7});
    file.resize(33);  // signature and head
    AppendBig(file, 0x7FFFFFFF);
    for (const char letter : std::string("tEXt")) file.push_back(static_cast<uint8_t>(letter));
    try {
        DecodePng(file);
        ADD_FAILURE() << "was read";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "the PNG file is damaged: it ends within a block");
    }
}

TEST(PngFormat, OtherKindsOfPngAreRefused) {
    EXPECT_THROW(DecodePng(HandMadePng(1, 1, 8, 2, {0, 1, 2, 3})), std::runtime_error);  // colour
    EXPECT_THROW(DecodePng(HandMadePng(1, 1, 8, 4, {0, 1, 2})), std::runtime_error);     // with transparency
    EXPECT_THROW(DecodePng(HandMadePng(8, 1, 1, 0, {0, 1})), std::runtime_error);        // black and white
}

TEST(PngFormat, AbsurdSizesAreRefused) {
    const std::vector<uint8_t> rows{0, 1, 2};
    EXPECT_THROW(DecodePng(HandMadePng(0, 1, 16, 0, rows)), std::runtime_error);
    EXPECT_THROW(DecodePng(HandMadePng(1, 0, 16, 0, rows)), std::runtime_error);
    EXPECT_THROW(DecodePng(HandMadePng(0x7FFFFFFF, 0x7FFFFFFF, 16, 0, rows)), std::runtime_error);
    EXPECT_THROW(DecodePng(HandMadePng(0xFFFFFFFF, 1, 16, 0, rows)), std::runtime_error);
    EXPECT_THROW(DecodePng(HandMadePng(20000, 20000, 16, 0, rows)), std::runtime_error);
    EXPECT_THROW(DecodePng(HandMadePng(1, 0x1FFFFFFF, 8, 0, rows)), std::runtime_error);
}

TEST(PngFormat, MissingRowsAreRefused) {
    EXPECT_THROW(DecodePng(HandMadePng(1, 3, 16, 0, {0, 1, 2, 0, 3, 4})), std::runtime_error);
}

TEST(PngFormat, AFileCutAnywhereIsRefused) {
    const std::vector<uint8_t> whole = HandMadePng(2, 1, 16, 0, {0, 1, 2, 3, 4});
    ASSERT_EQ(DecodePng(whole).pixels, (std::vector<uint16_t>{0x0102, 0x0304}));
    for (size_t length = 0; length < whole.size(); ++length)
        EXPECT_THROW(DecodePng({whole.begin(), whole.begin() + static_cast<ptrdiff_t>(length)}),
                     std::runtime_error)
            << length;
}

TEST(PngFormat, AWrongBitIsFoundOrHarmless) {
    const std::vector<uint8_t> whole = HandMadePng(2, 1, 16, 0, {0, 1, 2, 3, 4});
    size_t refused = 0;
    for (size_t bit = 0; bit < whole.size() * 8; ++bit) {
        std::vector<uint8_t> wrong = whole;
        wrong[bit / 8] = static_cast<uint8_t>(wrong[bit / 8] ^ (1U << (bit % 8)));
        try {
            EXPECT_EQ(DecodePng(wrong).pixels.size(), 2U);
        } catch (const std::runtime_error&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, whole.size() * 4);
}

TEST(PngFormat, WhatIsWrittenIsReadBack) {
    std::mt19937 random(20240501);
    for (const int32_t width : {1, 3, 64}) {
        Frame frame{width, 5, {}};
        std::vector<uint8_t> levels;
        for (int32_t i = 0; i < width * 5; ++i) {
            frame.pixels.push_back(static_cast<uint16_t>(random()));
            levels.push_back(static_cast<uint8_t>(random()));
        }
        EXPECT_EQ(DecodePng(EncodePng16(frame)).pixels, frame.pixels);
        const Frame narrow = DecodePng(EncodePng8(levels, width, 5));
        EXPECT_EQ(narrow.width, width);
        EXPECT_EQ(narrow.pixels, (std::vector<uint16_t>(levels.begin(), levels.end())));
    }
}

}  // namespace
}  // namespace vastrelline
