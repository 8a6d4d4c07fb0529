// SPDX-License-Identifier: Apache-2.0
#include <png.h>

#include <array>
#include <csetjmp>
#include <cstddef>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "formats/PngFormat.h"

// As in the decoder: whatever owns memory lives outside the function that can be left by a jump.
namespace vastrelline {
namespace {

constexpr int kCompression = 6;
constexpr size_t kMessageBytes = 120;

struct PngOutput {
    png_structp png = nullptr;
    png_infop info = nullptr;
    std::vector<uint8_t> bytes;
    std::array<char, kMessageBytes> message{};

    PngOutput() = default;
    ~PngOutput() { png_destroy_write_struct(&png, &info); }
    PngOutput(const PngOutput&) = delete;
    PngOutput& operator=(const PngOutput&) = delete;
};

void TakeError(png_structp png, png_const_charp text) {
    PngOutput& output = *static_cast<PngOutput*>(png_get_error_ptr(png));
    std::strncpy(output.message.data(), text, output.message.size() - 1);
    png_longjmp(png, 1);
}

void DropWarning(png_structp /*png*/, png_const_charp /*text*/) {}

bool Append(std::vector<uint8_t>& bytes, const uint8_t* more, size_t count) {
    try {
        bytes.insert(bytes.end(), more, more + count);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void TakeBytes(png_structp png, png_bytep bytes, size_t count) {
    PngOutput& output = *static_cast<PngOutput*>(png_get_io_ptr(png));
    if (!Append(output.bytes, bytes, count)) png_error(png, "out of memory");
}

void FlushNothing(png_structp /*png*/) {}

// The library's form of the texts, which it does not change.
std::vector<png_text> BorrowTexts(const std::vector<PngText>& texts) {
    std::vector<png_text> borrowed;
    for (const PngText& each : texts) {
        png_text& text = borrowed.emplace_back();
        text.compression = PNG_TEXT_COMPRESSION_NONE;
        text.key = const_cast<char*>(each.keyword.c_str());
        text.text = const_cast<char*>(each.text.c_str());
        text.text_length = each.text.size();
    }
    return borrowed;
}

bool WriteRows(PngOutput& output, const uint8_t* levels, png_uint_32 width, png_uint_32 height, int bits,
               const std::vector<png_text>& texts) {
    // NOLINTNEXTLINE(bugprone-*): the jump is how this library reports; no destructor is skipped here
    if (setjmp(png_jmpbuf(output.png)) != 0) return false;
    png_set_write_fn(output.png, &output, TakeBytes, FlushNothing);
    png_set_user_limits(output.png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_compression_level(output.png, kCompression);
    png_set_IHDR(output.png, output.info, width, height, bits, PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!texts.empty()) png_set_text(output.png, output.info, texts.data(), static_cast<int>(texts.size()));
    png_write_info(output.png, output.info);
    const size_t rowBytes = static_cast<size_t>(width) * static_cast<size_t>(bits / 8);
    for (size_t y = 0; y < height; ++y) png_write_row(output.png, levels + y * rowBytes);
    png_write_end(output.png, nullptr);
    return true;
}

std::vector<uint8_t> Encode(const std::vector<uint8_t>& levels, int32_t width, int32_t height, int bits,
                            const std::vector<PngText>& texts) {
    const std::vector<png_text> borrowed = BorrowTexts(texts);
    PngOutput output;
    output.png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &output, TakeError, DropWarning);
    if (output.png != nullptr) output.info = png_create_info_struct(output.png);
    if (output.info == nullptr) throw std::runtime_error("out of memory");
    if (!WriteRows(output, levels.data(), static_cast<png_uint_32>(width), static_cast<png_uint_32>(height),
                   bits, borrowed))
        throw std::runtime_error(std::string("cannot make a PNG: ") + output.message.data());
    return std::move(output.bytes);
}

}  // namespace

std::vector<uint8_t> EncodePng16(const Frame& frame, const std::vector<PngText>& texts) {
    std::vector<uint8_t> levels;
    levels.reserve(2 * frame.pixels.size());
    for (const uint16_t pixel : frame.pixels) {
        levels.push_back(static_cast<uint8_t>(pixel >> 8));
        levels.push_back(static_cast<uint8_t>(pixel & 0xFF));
    }
    return Encode(levels, frame.width, frame.height, 16, texts);
}

std::vector<uint8_t> EncodePng8(const std::vector<uint8_t>& levels, int32_t width, int32_t height,
                                const std::vector<PngText>& texts) {
    return Encode(levels, width, height, 8, texts);
}

}  // namespace vastrelline
