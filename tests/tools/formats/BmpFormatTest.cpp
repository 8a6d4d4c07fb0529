// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "formats/BmpFormat.h"

namespace vastrelline {
namespace {

void Append(std::vector<uint8_t>& bytes, uint32_t value, int count) {
    for (int i = 0; i < count; ++i) bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
}

// What stands in a bitmap; the defaults are those of a plain one.
struct BmpParts {
    uint32_t width = 1;
    uint32_t height = 1;
    uint32_t bits = 8;
    std::vector<uint8_t> rows{};
    std::vector<uint32_t> palette{};  // empty: 256 greys, where there is a palette at all
    uint32_t packing = 0;
    uint32_t coloursTold = 0;
    uint32_t gap = 0;  // bytes between palette and rows
    std::vector<uint32_t> masks{};
};

std::vector<uint8_t> HandMadeBmp(const BmpParts& parts) {
    std::vector<uint32_t> palette = parts.palette;
    if (palette.empty() && parts.bits <= 8)
        for (uint32_t grey = 0; grey < 256; ++grey) palette.push_back(grey * 0x010101);
    const size_t start = 54 + 4 * (palette.size() + parts.masks.size()) + parts.gap;
    std::vector<uint8_t> file{'B', 'M'};
    Append(file, static_cast<uint32_t>(start + parts.rows.size()), 4);
    Append(file, 0, 4);
    Append(file, static_cast<uint32_t>(start), 4);
    Append(file, 40, 4);
    Append(file, parts.width, 4);
    Append(file, parts.height, 4);
    Append(file, 1, 2);
    Append(file, parts.bits, 2);
    Append(file, parts.packing, 4);
    Append(file, 0, 4);
    Append(file, 0, 4);
    Append(file, 0, 4);
    Append(file, parts.coloursTold, 4);
    Append(file, 0, 4);
    for (const uint32_t mask : parts.masks) Append(file, mask, 4);
    for (const uint32_t colour : palette) Append(file, colour, 4);
    file.insert(file.end(), parts.gap, 0xEE);
    file.insert(file.end(), parts.rows.begin(), parts.rows.end());
    return file;
}

std::string ErrorOf(const std::vector<uint8_t>& bytes) {
    try {
        DecodeBmp(bytes);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "none";
}

constexpr uint32_t Negative(uint32_t value) { return 0U - value; }

TEST(BmpFormat, ReadsRowsFromTheBottom) {
    const DecodedFrame frame =
        DecodeBmp(HandMadeBmp({.width = 3, .height = 2, .rows = {1, 2, 3, 99, 4, 5, 6, 99}}));
    EXPECT_EQ(frame.width, 3);
    EXPECT_EQ(frame.height, 2);
    EXPECT_EQ(frame.pixels, (std::vector<uint16_t>{4, 5, 6, 1, 2, 3}));
    EXPECT_EQ(frame.bits, 8);
    EXPECT_TRUE(frame.notes.empty());
}

TEST(BmpFormat, ReadsRowsFromTheTop) {
    const std::vector<uint8_t> file =
        HandMadeBmp({.width = 3, .height = Negative(2), .rows = {1, 2, 3, 99, 4, 5, 6, 99}, .gap = 7});
    EXPECT_EQ(DecodeBmp(file).pixels, (std::vector<uint16_t>{1, 2, 3, 4, 5, 6}));
}

TEST(BmpFormat, AGreyPaletteTellsTheLevels) {
    const std::vector<uint8_t> file = HandMadeBmp({.width = 4,
                                                   .height = 1,
                                                   .rows = {0, 1, 2, 1},
                                                   .palette = {0x00FFFFFF, 0xFF808080, 0x00070707},
                                                   .coloursTold = 3});
    EXPECT_EQ(DecodeBmp(file).pixels, (std::vector<uint16_t>{255, 128, 7, 128}));
}

TEST(BmpFormat, ReadsGreyPixelsOf24And32Bits) {
    const std::vector<uint8_t> deep =
        HandMadeBmp({.width = 2, .height = 1, .bits = 24, .rows = {9, 9, 9, 200, 200, 200, 0, 0}});
    EXPECT_EQ(DecodeBmp(deep).pixels, (std::vector<uint16_t>{9, 200}));
    const std::vector<uint8_t> rows{9, 9, 9, 255, 200, 200, 200, 0};
    EXPECT_EQ(DecodeBmp(HandMadeBmp({.width = 2, .height = 1, .bits = 32, .rows = rows})).pixels,
              (std::vector<uint16_t>{9, 200}));
    const BmpParts masked{
        .width = 2, .height = 1, .bits = 32, .rows = rows, .packing = 3, .masks = {0xFF0000, 0xFF00, 0xFF}};
    EXPECT_EQ(DecodeBmp(HandMadeBmp(masked)).pixels, (std::vector<uint16_t>{9, 200}));
}

TEST(BmpFormat, ReadsTheOldestHead) {
    std::vector<uint8_t> file{'B', 'M'};
    Append(file, 0, 4);
    Append(file, 0, 4);
    Append(file, 26 + 6, 4);
    Append(file, 12, 4);
    Append(file, 2, 2);
    Append(file, 1, 2);
    Append(file, 1, 2);
    Append(file, 8, 2);
    file.insert(file.end(), {10, 10, 10, 20, 20, 20});  // two colours of three bytes
    file.insert(file.end(), {1, 0, 0, 0});
    EXPECT_EQ(DecodeBmp(file).pixels, (std::vector<uint16_t>{20, 10}));
}

TEST(BmpFormat, ColoursAreRefused) {
    EXPECT_EQ(ErrorOf(HandMadeBmp({.rows = {0, 0, 0, 0}, .palette = {0x00010203}, .coloursTold = 1})),
              "the bitmap's palette has colours; save it with 8 bits grey");
    EXPECT_EQ(ErrorOf(HandMadeBmp({.bits = 24, .rows = {1, 2, 1, 0}})),
              "the bitmap is a colour picture; save it with 8 bits grey");
}

TEST(BmpFormat, OtherKindsAreRefusedByName) {
    EXPECT_EQ(ErrorOf(HandMadeBmp({.bits = 1, .rows = {0, 0, 0, 0}})),
              "the bitmap has 1 bits a pixel; save it with 8 bits grey");
    EXPECT_EQ(ErrorOf(HandMadeBmp({.bits = 4, .rows = {0, 0, 0, 0}})),
              "the bitmap has 4 bits a pixel; save it with 8 bits grey");
    EXPECT_EQ(ErrorOf(HandMadeBmp({.rows = {1, 0, 0, 1}, .packing = 1})),
              "the bitmap is packed by run lengths (RLE); save it without packing");
    EXPECT_EQ(ErrorOf(HandMadeBmp({.bits = 4, .rows = {1, 0, 0, 1}, .packing = 2})),
              "the bitmap is packed by run lengths (RLE); save it without packing");
    EXPECT_EQ(ErrorOf(HandMadeBmp({.bits = 24, .rows = {1, 1, 1, 0}, .packing = 4})),
              "the bitmap is packed in a way that is not read; save it without packing");
    EXPECT_EQ(ErrorOf({'B', 'X'}), "the file is no bitmap (BMP)");
}

TEST(BmpFormat, LyingHeadsAreRefused) {
    const std::vector<uint8_t> row{0, 0, 0, 0};
    for (const uint32_t side : {0U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_NE(ErrorOf(HandMadeBmp({.width = side, .rows = row})), "none") << side;
        if (side == 0xFFFFFFFFU) continue;  // one row from the top
        EXPECT_NE(ErrorOf(HandMadeBmp({.height = side, .rows = row})), "none") << side;
    }
    EXPECT_EQ(ErrorOf(HandMadeBmp({.width = 20000, .height = 20000, .rows = row})),
              "the bitmap of 20000x20000 should hold 400000000 bytes of pixels, it holds 4");
    EXPECT_NE(ErrorOf(HandMadeBmp({.rows = row, .palette = {0, 0}, .coloursTold = 3})), "none");
    EXPECT_NE(ErrorOf(HandMadeBmp({.rows = row, .coloursTold = 257})), "none");
    EXPECT_EQ(ErrorOf(HandMadeBmp({.rows = {2, 0, 0, 0}, .palette = {0, 0}, .coloursTold = 2})),
              "a pixel of the bitmap names colour 2, the palette has 2");
    EXPECT_NE(ErrorOf(HandMadeBmp({.bits = 32, .rows = row, .packing = 3, .masks = {0xFF, 0xFF, 0xFF}})),
              "none");
    std::vector<uint8_t> startsInItsHead = HandMadeBmp({.rows = row});
    startsInItsHead[10] = 20;
    startsInItsHead[11] = 0;
    EXPECT_NE(ErrorOf(startsInItsHead), "none");
}

TEST(BmpFormat, AFileCutAnywhereIsRefused) {
    const std::vector<uint8_t> whole =
        HandMadeBmp({.width = 2, .height = 2, .rows = {1, 2, 0, 0, 3, 4, 0, 0}});
    ASSERT_EQ(DecodeBmp(whole).pixels.size(), 4U);
    for (size_t length = 0; length < whole.size(); ++length)
        EXPECT_THROW(DecodeBmp({whole.begin(), whole.begin() + static_cast<ptrdiff_t>(length)}),
                     std::runtime_error)
            << length;
}

TEST(BmpFormat, WrongBytesAreFoundOrHarmless) {
    const std::vector<uint8_t> whole =
        HandMadeBmp({.width = 2, .height = 2, .rows = {1, 2, 0, 0, 3, 4, 0, 0}});
    std::mt19937 random(20240501);
    size_t refused = 0;
    for (int round = 0; round < 5000; ++round) {
        std::vector<uint8_t> wrong = whole;
        for (int i = 0; i < 3; ++i) wrong[random() % 60] = static_cast<uint8_t>(random());
        try {
            const DecodedFrame frame = DecodeBmp(wrong);
            EXPECT_EQ(frame.pixels.size(), PixelCount(frame.width, frame.height));
            EXPECT_LE(frame.pixels.size(), whole.size());
        } catch (const std::runtime_error&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 2000U);
}

TEST(BmpFormat, WhatIsWrittenIsReadBack) {
    std::mt19937 random(20240501);
    for (const int32_t width : {1, 2, 3, 4, 5, 64}) {
        std::vector<uint8_t> levels;
        for (int32_t i = 0; i < width * 3; ++i) levels.push_back(static_cast<uint8_t>(random()));
        const std::vector<uint8_t> file = EncodeBmp8(levels, width, 3);
        const DecodedFrame frame = DecodeBmp(file);
        EXPECT_EQ(frame.width, width);
        EXPECT_EQ(frame.pixels, (std::vector<uint16_t>(levels.begin(), levels.end())));
    }
    EXPECT_EQ(EncodeBmp8({7, 8, 9}, 3, 1),
              HandMadeBmp({.width = 3, .rows = {7, 8, 9, 0}, .coloursTold = 256}));
}

}  // namespace
}  // namespace vastrelline
