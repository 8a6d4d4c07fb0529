// SPDX-License-Identifier: Apache-2.0
#include <tiffio.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>

#include "formats/TiffFormat.h"
#include "formats/TiffMemory.h"
#include "frames/FrameSize.h"

namespace vastrelline {
namespace {

// Up to this a file says by its length how much it may hold: a frame of 1 GiB needs one of 256 KiB.
constexpr uint64_t kTrustedDensity = 4096;

constexpr uint64_t kMaxTileBytes = uint64_t{64} << 20;

// A way of packing that loses nothing, and how many bytes a byte of it can become at the most.
struct Packing {
    uint16_t number;
    uint64_t densest;
};

constexpr Packing kPackings[] = {
    {COMPRESSION_NONE, 1},       {COMPRESSION_PACKBITS, 64},  // two bytes for a run of 128
    {COMPRESSION_LZW, 4096},  // a code of 9 to 12 bits for a string of the table
    {COMPRESSION_DEFLATE, 1040}, {COMPRESSION_ADOBE_DEFLATE, 1040},
    {COMPRESSION_LZMA, 16384},   {COMPRESSION_ZSTD, 65536},
};

struct TiffPage {
    uint32_t width = 0;
    uint32_t height = 0;
    int bits = 0;
    bool isWhiteZero = false;
    uint64_t densest = 1;

    size_t RowBytes() const { return size_t{width} * static_cast<size_t>(bits / 8); }
};

std::runtime_error Damaged(const TiffMemory& memory) {
    return std::runtime_error("the TIFF file is damaged" +
                              (memory.Message().empty() ? std::string() : ": " + memory.Message()));
}

uint16_t Tag16(TIFF* file, uint32_t tag, uint16_t otherwise) {
    uint16_t value = otherwise;
    return TIFFGetFieldDefaulted(file, tag, &value) == 1 ? value : otherwise;
}

// What is read, and in which words the rest is refused.
void ReadKind(TIFF* file, TiffPage& page) {
    const uint16_t colours = Tag16(file, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    if (Tag16(file, TIFFTAG_SAMPLESPERPIXEL, 1) != 1 ||
        (colours != PHOTOMETRIC_MINISBLACK && colours != PHOTOMETRIC_MINISWHITE))
        throw std::runtime_error("the TIFF file is not plain grey; save it with one sample a pixel");
    page.isWhiteZero = colours == PHOTOMETRIC_MINISWHITE;
    page.bits = Tag16(file, TIFFTAG_BITSPERSAMPLE, 1);
    const uint16_t format = Tag16(file, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    if ((page.bits != 8 && page.bits != 16) || (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_VOID))
        throw std::runtime_error("the TIFF file has " + std::to_string(page.bits) +
                                 (format == SAMPLEFORMAT_IEEEFP ? " bits of floating point"
                                  : format == SAMPLEFORMAT_INT  ? " bits with a sign"
                                                                : " bits") +
                                 " a pixel; save it with 8 or 16 unsigned ones");
    const uint16_t number = Tag16(file, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    const auto* const packing = std::find_if(std::begin(kPackings), std::end(kPackings),
                                             [number](const Packing& each) { return each.number == number; });
    if (packing == std::end(kPackings) || TIFFIsCODECConfigured(number) == 0)
        throw std::runtime_error("the TIFF file is packed in a way that is not read (number " +
                                 std::to_string(number) + "), or with losses; save it without packing");
    page.densest = packing->densest;
}

TiffPage ReadHead(TiffMemory& memory, size_t byteCount) {
    TIFF* const file = memory.File();
    TiffPage page;
    if (TIFFGetField(file, TIFFTAG_IMAGEWIDTH, &page.width) != 1 ||
        TIFFGetField(file, TIFFTAG_IMAGELENGTH, &page.height) != 1)
        throw Damaged(memory);
    ReadKind(file, page);
    constexpr uint32_t kLongestSide = INT32_MAX;
    const FrameSize size{static_cast<int32_t>(std::min(page.width, kLongestSide)),
                         static_cast<int32_t>(std::min(page.height, kLongestSide))};
    if (!IsUsableSize(size))
        throw std::runtime_error("the TIFF file tells an unusable size, " + std::to_string(page.width) + "x" +
                                 std::to_string(page.height));
    if (uint64_t{page.RowBytes()} * page.height > page.densest * uint64_t{byteCount})
        throw std::runtime_error("the TIFF file is too short for its size, " + FormatFrameSize(size));
    return page;
}

// The library gives samples of 16 bits in the machine's own order.
void PutLevels(const TiffPage& page, const uint8_t* bytes, size_t count, uint16_t* target) {
    const int top = page.bits == 8 ? UINT8_MAX : UINT16_MAX;
    for (size_t i = 0; i < count; ++i) {
        uint16_t level = bytes[i];
        if (page.bits == 16) std::memcpy(&level, bytes + 2 * i, sizeof level);
        target[i] = page.isWhiteZero ? static_cast<uint16_t>(top - level) : level;
    }
}

void ReadStrips(TiffMemory& memory, const TiffPage& page, Frame& frame) {
    if (TIFFScanlineSize(memory.File()) != static_cast<tmsize_t>(page.RowBytes())) throw Damaged(memory);
    std::vector<uint8_t> row(page.RowBytes());
    for (uint32_t y = 0; y < page.height; ++y) {
        if (TIFFReadScanline(memory.File(), row.data(), y) != 1) throw Damaged(memory);
        frame.pixels.resize(size_t{y + 1} * page.width);
        PutLevels(page, row.data(), page.width, &frame.pixels[size_t{y} * page.width]);
    }
}

void ReadTiles(TiffMemory& memory, const TiffPage& page, Frame& frame) {
    TIFF* const file = memory.File();
    uint32_t wide = 0;
    uint32_t high = 0;
    TIFFGetField(file, TIFFTAG_TILEWIDTH, &wide);
    TIFFGetField(file, TIFFTAG_TILELENGTH, &high);
    const size_t pixelBytes = static_cast<size_t>(page.bits / 8);
    const uint64_t tileBytes = uint64_t{wide} * high * pixelBytes;
    if (wide == 0 || high == 0 || high > kMaxTileBytes || wide > kMaxTileBytes || tileBytes > kMaxTileBytes)
        throw std::runtime_error("the TIFF file has tiles of " + std::to_string(wide) + "x" +
                                 std::to_string(high) + ", which are not read");
    // Tiles reach over the edges, and a file may tell of the same bytes for all of them: what is unpacked has
    // to be there as well.
    const uint64_t tiles =
        ((uint64_t{page.width} + wide - 1) / wide) * ((uint64_t{page.height} + high - 1) / high);
    if (tiles * tileBytes > page.densest * uint64_t{memory.ByteCount()})
        throw std::runtime_error("the TIFF file is too short for its tiles of " + std::to_string(wide) + "x" +
                                 std::to_string(high));
    if (static_cast<uint64_t>(TIFFTileSize(file)) != tileBytes) throw Damaged(memory);
    std::vector<uint8_t> tile(static_cast<size_t>(tileBytes));
    for (uint32_t top = 0; top < page.height; top += high) {
        const uint32_t bottom = std::min(page.height, top + high);
        frame.pixels.resize(size_t{bottom} * page.width);
        for (uint32_t left = 0; left < page.width; left += wide) {
            if (TIFFReadTile(file, tile.data(), left, top, 0, 0) < 0) throw Damaged(memory);
            const size_t count = std::min(wide, page.width - left);
            for (uint32_t y = top; y < bottom; ++y)
                PutLevels(page, tile.data() + size_t{y - top} * wide * pixelBytes, count,
                          &frame.pixels[size_t{y} * page.width + left]);
        }
    }
}

}  // namespace

DecodedFrame DecodeTiff(const std::vector<uint8_t>& bytes) {
    TiffMemory memory(bytes);
    if (memory.File() == nullptr) throw Damaged(memory);
    const TiffPage page = ReadHead(memory, bytes.size());

    DecodedFrame frame;
    frame.bits = page.bits;
    frame.width = static_cast<int32_t>(page.width);
    frame.height = static_cast<int32_t>(page.height);
    // The frame grows as it is read, so that only levels that are there take memory.
    const size_t count = PixelCount(frame.width, frame.height);
    if (page.densest <= kTrustedDensity) frame.pixels.reserve(count);
    if (TIFFIsTiled(memory.File()) != 0)
        ReadTiles(memory, page, frame);
    else
        ReadStrips(memory, page, frame);

    if (page.isWhiteZero)
        frame.notes.emplace_back("the TIFF file stores white as 0: its levels were inverted");
    if (Tag16(memory.File(), TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT) != ORIENTATION_TOPLEFT)
        frame.notes.emplace_back(
            "the TIFF file asks viewers to turn it: its rows were taken as they are stored");
    if (TIFFLastDirectory(memory.File()) == 0)
        frame.notes.emplace_back("the TIFF file has several pages: the first one was taken");
    return frame;
}

}  // namespace vastrelline
