// SPDX-License-Identifier: Apache-2.0
#include <png.h>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>

#include "formats/PngFormat.h"
#include "frames/FrameSize.h"

// The PNG library leaves a failing call by a jump that runs no destructors. So everything that owns memory
// lives in the frame of DecodePng, and the functions that can be left by a jump hold only plain values.
namespace vastrelline {
namespace {

// The densest packing that the format's compression reaches is a little below this many bytes per byte.
constexpr uint64_t kDensestPacking = 1040;
constexpr size_t kSignatureBytes = 8;
constexpr size_t kHeadBytes = 33;   // signature and first block
constexpr size_t kBlockFrame = 12;  // length, name and checksum
constexpr size_t kMessageBytes = 120;

struct PngInput {
    png_structp png = nullptr;
    png_infop info = nullptr;
    const uint8_t* next = nullptr;
    size_t left = 0;
    std::array<char, kMessageBytes> message{};

    PngInput() = default;
    ~PngInput() { png_destroy_read_struct(&png, &info, nullptr); }
    PngInput(const PngInput&) = delete;
    PngInput& operator=(const PngInput&) = delete;
};

void TakeError(png_structp png, png_const_charp text) {
    PngInput& input = *static_cast<PngInput*>(png_get_error_ptr(png));
    std::strncpy(input.message.data(), text, input.message.size() - 1);
    png_longjmp(png, 1);
}

void DropWarning(png_structp /*png*/, png_const_charp /*text*/) {}

void TakeBytes(png_structp png, png_bytep target, size_t count) {
    PngInput& input = *static_cast<PngInput*>(png_get_io_ptr(png));
    if (count > input.left) png_error(png, "the file ends too early");
    std::memcpy(target, input.next, count);
    input.next += count;
    input.left -= count;
}

bool ReadHead(PngInput& input) {
    // NOLINTNEXTLINE(bugprone-*): the jump is how this library reports; no destructor is skipped here
    if (setjmp(png_jmpbuf(input.png)) != 0) return false;
    png_set_read_fn(input.png, &input, TakeBytes);
    png_set_user_limits(input.png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);  // sizes are judged by the caller
    png_read_info(input.png, input.info);
    return true;
}

// Row by row: a table of rows would be larger than a frame of slender rows itself.
bool ReadRows(PngInput& input, uint8_t* levels, size_t rowBytes, size_t height) {
    // NOLINTNEXTLINE(bugprone-*): as above
    if (setjmp(png_jmpbuf(input.png)) != 0) return false;
    const int passes = png_set_interlace_handling(input.png);
    png_read_update_info(input.png, input.info);
    for (int pass = 0; pass < passes; ++pass)
        for (size_t y = 0; y < height; ++y) png_read_row(input.png, levels + y * rowBytes, nullptr);
    png_read_end(input.png, nullptr);
    return true;
}

std::runtime_error Damaged(const PngInput& input) {
    return std::runtime_error(std::string("the PNG file is damaged: ") + input.message.data());
}

// The library takes memory for the length that a block tells before a byte of it is there.
void TestBlocks(const std::vector<uint8_t>& bytes) {
    for (size_t at = kSignatureBytes; at < bytes.size();) {
        const size_t left = bytes.size() - at;
        const size_t length = left < kBlockFrame ? 0 : png_get_uint_32(bytes.data() + at);
        if (left < kBlockFrame || left - kBlockFrame < length)
            throw std::runtime_error("the PNG file is damaged: it ends within a block");
        if (std::memcmp(bytes.data() + at + 4, "IEND", 4) == 0) return;  // what follows is no part of it
        at += kBlockFrame + length;
    }
}

}  // namespace

DecodedFrame DecodePng(const std::vector<uint8_t>& bytes) {
    if (bytes.size() < kHeadBytes || png_sig_cmp(bytes.data(), 0, kSignatureBytes) != 0)
        throw std::runtime_error("the file is no PNG");
    TestBlocks(bytes);
    PngInput input;
    input.next = bytes.data();
    input.left = bytes.size();
    input.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &input, TakeError, DropWarning);
    if (input.png != nullptr) input.info = png_create_info_struct(input.png);
    if (input.info == nullptr) throw std::runtime_error("out of memory");
    if (!ReadHead(input)) throw Damaged(input);

    const int bits = png_get_bit_depth(input.png, input.info);
    if (png_get_color_type(input.png, input.info) != PNG_COLOR_TYPE_GRAY || (bits != 8 && bits != 16))
        throw std::runtime_error("the PNG file is not plain grey with 8 or 16 bits");
    const png_uint_32 wide = png_get_image_width(input.png, input.info);
    const png_uint_32 high = png_get_image_height(input.png, input.info);
    const FrameSize size{static_cast<int32_t>(wide),
                         static_cast<int32_t>(high)};  // the format ends at 2^31 - 1
    if (!IsUsableSize(size))
        throw std::runtime_error("the PNG file tells an unusable size, " + FormatFrameSize(size));
    const size_t rowBytes = static_cast<size_t>(size.width) * static_cast<size_t>(bits / 8);
    // Each row has one more byte, the number of its filter.
    if ((uint64_t{rowBytes} + 1) * high > kDensestPacking * bytes.size())
        throw std::runtime_error("the PNG file is too short for its size, " + FormatFrameSize(size));

    std::vector<uint8_t> levels(rowBytes * static_cast<size_t>(size.height));
    if (!ReadRows(input, levels.data(), rowBytes, static_cast<size_t>(size.height))) throw Damaged(input);

    const size_t count = PixelCount(size.width, size.height);
    DecodedFrame frame{{size.width, size.height, std::vector<uint16_t>(count)}, bits, {}};
    if (bits == 8) {
        std::copy(levels.begin(), levels.end(), frame.pixels.begin());
    } else {
        for (size_t i = 0; i < frame.pixels.size(); ++i)
            frame.pixels[i] = static_cast<uint16_t>((levels[2 * i] << 8) | levels[2 * i + 1]);
    }
    return frame;
}

}  // namespace vastrelline
