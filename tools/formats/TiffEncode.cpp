// SPDX-License-Identifier: Apache-2.0
#include <tiffio.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>

#include "formats/TiffFormat.h"
#include "formats/TiffMemory.h"

namespace vastrelline {
namespace {

constexpr uint64_t kMaxBytes = UINT32_MAX - (uint64_t{64} << 20);  // leaves room for head and tables
constexpr uint32_t kRowsInStrip = 64;
constexpr int kDeflateEffort = 6;

struct TiffPicture {
    const uint8_t* levels;  // of 16 bits: in the machine's own order
    uint32_t width;
    uint32_t height;
    uint16_t bits;
};

bool WritePage(TIFF* file, const TiffPicture& picture, TiffPacking packing) {
    bool isWell = true;
    const auto set = [&](uint32_t tag, auto value) {
        isWell = isWell && TIFFSetField(file, tag, value) == 1;
    };
    set(TIFFTAG_IMAGEWIDTH, picture.width);
    set(TIFFTAG_IMAGELENGTH, picture.height);
    set(TIFFTAG_BITSPERSAMPLE, int{picture.bits});
    set(TIFFTAG_SAMPLESPERPIXEL, 1);
    set(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    set(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    set(TIFFTAG_ROWSPERSTRIP, std::min(kRowsInStrip, picture.height));
    set(TIFFTAG_COMPRESSION, packing == TiffPacking::None ? COMPRESSION_NONE : COMPRESSION_ADOBE_DEFLATE);
    if (packing == TiffPacking::Deflate) {
        set(TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
        set(TIFFTAG_ZIPQUALITY, kDeflateEffort);
    }
    const size_t rowBytes = size_t{picture.width} * picture.bits / 8;
    std::vector<uint8_t> row(rowBytes);  // the library may change what it is given
    for (uint32_t y = 0; y < picture.height && isWell; ++y) {
        std::memcpy(row.data(), picture.levels + size_t{y} * rowBytes, rowBytes);
        isWell = TIFFWriteScanline(file, row.data(), y, 0) == 1;
    }
    return isWell && TIFFFlush(file) == 1;
}

std::vector<uint8_t> Encode(const TiffPicture& picture, TiffPacking packing) {
    if (uint64_t{picture.width} * picture.height * picture.bits / 8 > kMaxBytes)
        throw std::runtime_error("a TIFF file ends at 4 GiB");
    TiffMemory memory;
    const bool isWell = memory.File() != nullptr && WritePage(memory.File(), picture, packing);
    memory.Close();
    if (!isWell) throw std::runtime_error("cannot make a TIFF file: " + memory.Message());
    return std::move(memory.Written());
}

}  // namespace

std::vector<uint8_t> EncodeTiff16(const Frame& frame, TiffPacking packing) {
    return Encode({reinterpret_cast<const uint8_t*>(frame.pixels.data()), static_cast<uint32_t>(frame.width),
                   static_cast<uint32_t>(frame.height), 16},
                  packing);
}

std::vector<uint8_t> EncodeTiff8(const std::vector<uint8_t>& levels, int32_t width, int32_t height,
                                 TiffPacking packing) {
    return Encode({levels.data(), static_cast<uint32_t>(width), static_cast<uint32_t>(height), 8}, packing);
}

}  // namespace vastrelline
