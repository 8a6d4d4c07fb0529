// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <tiffio.h>

#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "formats/TiffFormat.h"
#include "formats/TiffMemory.h"

namespace vastrelline {
namespace {

struct Field {
    uint16_t tag;
    uint16_t kind;  // 3: 16 bits, 4: 32 bits
    uint32_t value;
};

// A file written by hand: head, levels, then a table of fields for each page.
class TiffBytes {
public:
    explicit TiffBytes(bool isBigEndian = false) : isBigEndian_(isBigEndian) {
        bytes_ = isBigEndian ? std::vector<uint8_t>{'M', 'M', 0, 42} : std::vector<uint8_t>{'I', 'I', 42, 0};
        Append(0, 4);  // where the first table lies
    }

    uint32_t Add(const std::vector<uint8_t>& levels) {
        const auto at = static_cast<uint32_t>(bytes_.size());
        bytes_.insert(bytes_.end(), levels.begin(), levels.end());
        if (bytes_.size() % 2 != 0) bytes_.push_back(0);
        return at;
    }

    void AddPage(const std::vector<Field>& fields) {
        Put(linkPlace_, static_cast<uint32_t>(bytes_.size()));
        Append(static_cast<uint32_t>(fields.size()), 2);
        for (const Field& field : fields) {
            Append(field.tag, 2);
            Append(field.kind, 2);
            Append(1, 4);
            if (field.kind == 3) {
                Append(field.value, 2);
                Append(0, 2);
            } else {
                Append(field.value, 4);
            }
        }
        linkPlace_ = bytes_.size();
        Append(0, 4);
    }

    const std::vector<uint8_t>& All() const { return bytes_; }

private:
    uint8_t ByteOf(uint32_t value, int i, int count) const {
        return static_cast<uint8_t>(value >> (8 * (isBigEndian_ ? count - 1 - i : i)));
    }
    void Append(uint32_t value, int count) {
        for (int i = 0; i < count; ++i) bytes_.push_back(ByteOf(value, i, count));
    }
    void Put(size_t at, uint32_t value) {
        for (int i = 0; i < 4; ++i) bytes_[at + static_cast<size_t>(i)] = ByteOf(value, i, 4);
    }

    bool isBigEndian_;
    std::vector<uint8_t> bytes_;
    size_t linkPlace_ = 4;
};

struct TiffParts {
    uint32_t width = 2;
    uint32_t height = 1;
    uint32_t bits = 16;
    uint32_t packing = 1;
    uint32_t colours = 1;  // 1: 0 is black
    uint32_t samples = 1;
    uint32_t format = 1;  // unsigned
    uint32_t rowsInStrip = 1000;
};

std::vector<Field> FieldsOf(const TiffParts& parts, uint32_t at, uint32_t count) {
    return {{256, 4, parts.width},   {257, 4, parts.height},      {258, 3, parts.bits},
            {259, 3, parts.packing}, {262, 3, parts.colours},     {273, 4, at},
            {277, 3, parts.samples}, {278, 4, parts.rowsInStrip}, {279, 4, count},
            {339, 3, parts.format}};
}

std::vector<uint8_t> HandMadeTiff(const TiffParts& parts, const std::vector<uint8_t>& levels,
                                  bool isBigEndian = false, int pages = 1) {
    TiffBytes file(isBigEndian);
    const uint32_t at = file.Add(levels);
    for (int page = 0; page < pages; ++page)
        file.AddPage(FieldsOf(parts, at, static_cast<uint32_t>(levels.size())));
    return file.All();
}

std::string ErrorOf(const std::vector<uint8_t>& bytes) {
    try {
        DecodeTiff(bytes);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "none";
}

Frame RandomFrame(int32_t width, int32_t height) {
    std::mt19937 random(20240501);
    Frame frame{width, height, {}};
    for (size_t i = 0; i < PixelCount(width, height); ++i)
        frame.pixels.push_back(static_cast<uint16_t>(random()));
    return frame;
}

// The frame as a file of tiles, by the TIFF library.
std::vector<uint8_t> TiledTiff(const Frame& frame, uint32_t side, int packing) {
    TiffMemory memory;
    TIFF* const file = memory.File();
    TIFFSetField(file, TIFFTAG_IMAGEWIDTH, frame.width);
    TIFFSetField(file, TIFFTAG_IMAGELENGTH, frame.height);
    TIFFSetField(file, TIFFTAG_BITSPERSAMPLE, 16);
    TIFFSetField(file, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFSetField(file, TIFFTAG_COMPRESSION, packing);
    TIFFSetField(file, TIFFTAG_TILEWIDTH, side);
    TIFFSetField(file, TIFFTAG_TILELENGTH, side);
    for (uint32_t top = 0; top < static_cast<uint32_t>(frame.height); top += side)
        for (uint32_t left = 0; left < static_cast<uint32_t>(frame.width); left += side) {
            std::vector<uint16_t> tile(size_t{side} * side, 0xAAAA);
            for (uint32_t y = 0; y < side && top + y < static_cast<uint32_t>(frame.height); ++y)
                for (uint32_t x = 0; x < side && left + x < static_cast<uint32_t>(frame.width); ++x)
                    tile[size_t{y} * side + x] =
                        frame.pixels[size_t{top + y} * static_cast<size_t>(frame.width) + left + x];
            TIFFWriteTile(file, tile.data(), left, top, 0, 0);
        }
    memory.Close();
    return memory.Written();
}

// One pixel that names a colour, by the TIFF library.
std::vector<uint8_t> PaletteTiff() {
    TiffMemory memory;
    TIFF* const file = memory.File();
    TIFFSetField(file, TIFFTAG_IMAGEWIDTH, 1);
    TIFFSetField(file, TIFFTAG_IMAGELENGTH, 1);
    TIFFSetField(file, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(file, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_PALETTE);
    std::vector<uint16_t> colours(256, 7);
    TIFFSetField(file, TIFFTAG_COLORMAP, colours.data(), colours.data(), colours.data());
    uint8_t index = 9;
    TIFFWriteScanline(file, &index, 0, 0);
    memory.Close();
    return memory.Written();
}

TEST(TiffFormat, ReadsLevelsOf16BitsOfBothByteOrders) {
    const DecodedFrame little = DecodeTiff(HandMadeTiff({}, {0x02, 0x01, 0xFE, 0xFF}));
    EXPECT_EQ(little.width, 2);
    EXPECT_EQ(little.height, 1);
    EXPECT_EQ(little.bits, 16);
    EXPECT_EQ(little.pixels, (std::vector<uint16_t>{0x0102, 0xFFFE}));
    EXPECT_TRUE(little.notes.empty());
    const DecodedFrame big = DecodeTiff(HandMadeTiff({}, {0x01, 0x02, 0xFF, 0xFE}, true));
    EXPECT_EQ(big.pixels, (std::vector<uint16_t>{0x0102, 0xFFFE}));
}

TEST(TiffFormat, ReadsLevelsOf8BitsAsTheyAre) {
    const DecodedFrame frame = DecodeTiff(HandMadeTiff({.width = 3, .bits = 8}, {0, 7, 255}));
    EXPECT_EQ(frame.pixels, (std::vector<uint16_t>{0, 7, 255}));
    EXPECT_EQ(frame.bits, 8);
}

TEST(TiffFormat, WhiteAsZeroIsInvertedAndSaid) {
    const DecodedFrame narrow = DecodeTiff(HandMadeTiff({.bits = 8, .colours = 0}, {0, 250}));
    EXPECT_EQ(narrow.pixels, (std::vector<uint16_t>{255, 5}));
    const DecodedFrame wide = DecodeTiff(HandMadeTiff({.colours = 0}, {0x02, 0x01, 0xFE, 0xFF}));
    EXPECT_EQ(wide.pixels, (std::vector<uint16_t>{0xFEFD, 1}));
    EXPECT_EQ(wide.notes,
              std::vector<std::string>{"the TIFF file stores white as 0: its levels were inverted"});
}

TEST(TiffFormat, OfSeveralPagesTheFirstIsTakenAndSaid) {
    const DecodedFrame frame = DecodeTiff(HandMadeTiff({}, {1, 0, 2, 0}, false, 2));
    EXPECT_EQ(frame.pixels, (std::vector<uint16_t>{1, 2}));
    EXPECT_EQ(frame.notes,
              std::vector<std::string>{"the TIFF file has several pages: the first one was taken"});
}

TEST(TiffFormat, ReadsAPackBitsStripWrittenByHand) {
    // A run of four bytes, then two bytes as they are.
    EXPECT_EQ(DecodeTiff(HandMadeTiff({.width = 6, .bits = 8, .packing = 32773}, {0xFD, 9, 1, 3, 4})).pixels,
              (std::vector<uint16_t>{9, 9, 9, 9, 3, 4}));
}

TEST(TiffFormat, OtherKindsAreRefusedByName) {
    const std::vector<uint8_t> levels(64, 1);
    EXPECT_EQ(ErrorOf(HandMadeTiff({.colours = 2, .samples = 3}, levels)),
              "the TIFF file is not plain grey; save it with one sample a pixel");
    EXPECT_EQ(ErrorOf(PaletteTiff()), "the TIFF file is not plain grey; save it with one sample a pixel");
    EXPECT_EQ(ErrorOf(HandMadeTiff({.bits = 1}, levels)),
              "the TIFF file has 1 bits a pixel; save it with 8 or 16 unsigned ones");
    EXPECT_EQ(ErrorOf(HandMadeTiff({.bits = 32, .format = 3}, levels)),
              "the TIFF file has 32 bits of floating point a pixel; save it with 8 or 16 unsigned ones");
    EXPECT_EQ(ErrorOf(HandMadeTiff({.format = 2}, levels)),
              "the TIFF file has 16 bits with a sign a pixel; save it with 8 or 16 unsigned ones");
    EXPECT_EQ(ErrorOf(HandMadeTiff({.bits = 8, .packing = 7}, levels)),
              "the TIFF file is packed in a way that is not read (number 7), or with losses; save it without "
              "packing");
    EXPECT_NE(ErrorOf({'I', 'I', 42, 0}), "none");
    EXPECT_NE(ErrorOf({}), "none");
}

TEST(TiffFormat, LyingSizesAreRefusedBeforeMemoryIsTaken) {
    const std::vector<uint8_t> levels(64, 1);
    for (const uint32_t side : {0U, 20000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_NE(ErrorOf(HandMadeTiff({.width = side, .height = 20000}, levels)), "none") << side;
        EXPECT_NE(ErrorOf(HandMadeTiff({.width = 20000, .height = side}, levels)), "none") << side;
    }
    EXPECT_EQ(ErrorOf(HandMadeTiff({.width = 20000, .height = 20000}, levels)),
              "the TIFF file is too short for its size, 20000x20000");
    EXPECT_EQ(ErrorOf(HandMadeTiff({.width = 20000, .height = 20000, .packing = 8}, levels)),
              "the TIFF file is too short for its size, 20000x20000");
}

TEST(TiffFormat, HugeTilesAreRefused) {
    TiffBytes file;
    const uint32_t at = file.Add(std::vector<uint8_t>(64, 1));
    file.AddPage({{256, 4, 2},
                  {257, 4, 2},
                  {258, 3, 8},
                  {259, 3, 8},
                  {262, 3, 1},
                  {277, 3, 1},
                  {322, 4, 0x40000},
                  {323, 4, 0x40000},
                  {324, 4, at},
                  {325, 4, 64}});
    EXPECT_EQ(ErrorOf(file.All()), "the TIFF file has tiles of 262144x262144, which are not read");
}

// A row of 400 x 1 pixels in tiles of 16 x 2048, each 32 KiB to unpack for 16 pixels.
TEST(TiffFormat, TilesThatAFileCannotHoldAreRefused) {
    TiffBytes file;
    const uint32_t at = file.Add(std::vector<uint8_t>(64, 1));
    file.AddPage({{256, 4, 400},
                  {257, 4, 1},
                  {258, 3, 8},
                  {259, 3, 8},
                  {262, 3, 1},
                  {277, 3, 1},
                  {322, 4, 16},
                  {323, 4, 2048},
                  {324, 4, at},
                  {325, 4, 64}});
    EXPECT_EQ(ErrorOf(file.All()), "the TIFF file is too short for its tiles of 16x2048");
}

TEST(TiffFormat, AFileCutAnywhereIsRefused) {
    for (const TiffPacking packing : {TiffPacking::None, TiffPacking::Deflate}) {
        const std::vector<uint8_t> whole = EncodeTiff16(RandomFrame(5, 3), packing);
        ASSERT_EQ(DecodeTiff(whole).pixels.size(), 15U);
        // The last four bytes say that there is no other page; all levels stand before them.
        testing::internal::CaptureStderr();
        for (size_t length = 0; length + 4 < whole.size(); ++length)
            EXPECT_NE(ErrorOf({whole.begin(), whole.begin() + static_cast<ptrdiff_t>(length)}), "none")
                << length;
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }
}

TEST(TiffFormat, WrongBytesAreFoundOrHarmlessAndNobodyIsTold) {
    const std::vector<std::vector<uint8_t>> files{EncodeTiff16(RandomFrame(9, 70), TiffPacking::None),
                                                  EncodeTiff16(RandomFrame(9, 70), TiffPacking::Deflate),
                                                  TiledTiff(RandomFrame(20, 18), 16, COMPRESSION_LZW),
                                                  HandMadeTiff({}, {1, 2, 3, 4}, true, 3)};
    std::mt19937 random(20240501);
    size_t refused = 0;
    testing::internal::CaptureStderr();
    for (const std::vector<uint8_t>& whole : files) {
        for (int round = 0; round < 3000; ++round) {
            std::vector<uint8_t> wrong = whole;
            for (int i = 0; i < 1 + round % 4; ++i) {
                // Mostly in the head and the tables, which the library writes last.
                const size_t at =
                    random() % 2 == 0 ? random() % 16 : wrong.size() - 1 - random() % 200 % wrong.size();
                wrong[std::min(at, wrong.size() - 1)] = static_cast<uint8_t>(random());
            }
            try {
                const DecodedFrame frame = DecodeTiff(wrong);
                EXPECT_EQ(frame.pixels.size(), PixelCount(frame.width, frame.height));
            } catch (const std::runtime_error& error) {
                EXPECT_STRNE(error.what(), "");
                ++refused;
            }
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_GT(refused, 3000U);
}

TEST(TiffFormat, WhatIsWrittenIsReadBack) {
    for (const auto& [width, height] : {std::pair{1, 1}, {3, 200}, {64, 65}, {1000, 3}})
        for (const TiffPacking packing : {TiffPacking::None, TiffPacking::Deflate}) {
            SCOPED_TRACE(testing::Message() << width << " x " << height);
            const Frame frame = RandomFrame(width, height);
            const std::vector<uint8_t> file = EncodeTiff16(frame, packing);
            const DecodedFrame read = DecodeTiff(file);
            EXPECT_EQ(read.width, width);
            EXPECT_EQ(read.pixels, frame.pixels);
            EXPECT_EQ(read.bits, 16);
            EXPECT_TRUE(read.notes.empty());
            EXPECT_EQ(EncodeTiff16(frame, packing), file);
            std::vector<uint8_t> levels;
            for (const uint16_t pixel : frame.pixels) levels.push_back(static_cast<uint8_t>(pixel));
            const DecodedFrame narrow = DecodeTiff(EncodeTiff8(levels, width, height, packing));
            EXPECT_EQ(narrow.pixels, (std::vector<uint16_t>(levels.begin(), levels.end())));
            EXPECT_EQ(narrow.bits, 8);
        }
}

TEST(TiffFormat, DeflateIsSmallerForSmoothFrames) {
    Frame frame{200, 200, {}};
    for (int i = 0; i < 40000; ++i) frame.pixels.push_back(static_cast<uint16_t>(i / 7));
    const size_t plain = EncodeTiff16(frame, TiffPacking::None).size();
    EXPECT_GT(plain, 80000U);
    EXPECT_LT(EncodeTiff16(frame, TiffPacking::Deflate).size(), plain / 4);
}

TEST(TiffFormat, ReadsTilesOfEveryPackingWithoutLoss) {
    const Frame frame = RandomFrame(70, 45);
    for (const int packing : {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_PACKBITS,
                              COMPRESSION_ADOBE_DEFLATE, COMPRESSION_LZMA, COMPRESSION_ZSTD}) {
        if (TIFFIsCODECConfigured(static_cast<uint16_t>(packing)) == 0) continue;
        SCOPED_TRACE(packing);
        for (const uint32_t side : {16U, 32U, 128U})
            EXPECT_EQ(DecodeTiff(TiledTiff(frame, side, packing)).pixels, frame.pixels);
    }
}

}  // namespace
}  // namespace vastrelline
