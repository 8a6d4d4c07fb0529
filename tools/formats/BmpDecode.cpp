// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>

#include "formats/BmpFormat.h"
#include "frames/FrameSize.h"

namespace vastrelline {
namespace {

constexpr size_t kFileHeadBytes = 14;
constexpr uint32_t kCoreHeadBytes = 12;  // the oldest head, with sides of 16 bits and palettes of three bytes
constexpr uint32_t kInfoHeadBytes = 40;
constexpr uint32_t kMaxHeadBytes = 124;
constexpr size_t kMaskBytes = 12;
constexpr uint32_t kMaxColours = 256;

// Ways of packing, as the head tells them.
constexpr uint32_t kPlain = 0;
constexpr uint32_t kRunLength8 = 1;
constexpr uint32_t kRunLength4 = 2;
constexpr uint32_t kMasks = 3;

struct BmpHead {
    int32_t width = 0;
    int32_t height = 0;
    bool isTopDown = false;
    size_t bits = 0;
    uint32_t packing = kPlain;
    uint32_t colours = 0;
    size_t entryBytes = 4;  // of a colour of the palette
    size_t headEnd = 0;     // where the palette starts
    size_t pixels = 0;      // where the lowest row starts, or with isTopDown the highest
};

std::runtime_error NoSense() { return std::runtime_error("the head of the bitmap makes no sense"); }

uint32_t Little16(const std::vector<uint8_t>& bytes, size_t at) {
    return static_cast<uint32_t>(bytes[at]) | (static_cast<uint32_t>(bytes[at + 1]) << 8U);
}

uint32_t Little32(const std::vector<uint8_t>& bytes, size_t at) {
    return Little16(bytes, at) | (Little16(bytes, at + 2) << 16U);
}

void ReadSides(const std::vector<uint8_t>& bytes, bool isCore, BmpHead& head) {
    if (isCore) {
        head.width = static_cast<int32_t>(Little16(bytes, 18));
        head.height = static_cast<int32_t>(Little16(bytes, 20));
        return;
    }
    head.width = static_cast<int32_t>(Little32(bytes, 18));
    const int64_t height = static_cast<int32_t>(Little32(bytes, 22));
    head.isTopDown = height < 0;
    if (height == INT32_MIN) throw NoSense();
    head.height = static_cast<int32_t>(head.isTopDown ? -height : height);
}

// The masks say which bits are red, green and blue: one byte each, in whatever order, is as good as none.
void TestMasks(const std::vector<uint8_t>& bytes, uint32_t headBytes) {
    const size_t start = kFileHeadBytes + kInfoHeadBytes;
    if (headBytes == kInfoHeadBytes && bytes.size() < start + kMaskBytes) throw NoSense();
    uint32_t all = 0;
    for (size_t at = start; at < start + kMaskBytes; at += 4) {
        const uint32_t mask = Little32(bytes, at);
        if (mask != 0xFFU && mask != 0xFF00U && mask != 0xFF0000U)
            throw std::runtime_error(
                "the bitmap's colours lie in an order that is not read; save it with 8 bits grey");
        all |= mask;
    }
    if (all != 0xFFFFFFU) throw NoSense();
}

BmpHead ReadHead(const std::vector<uint8_t>& bytes) {
    if (bytes.size() < 2 || bytes[0] != 'B' || bytes[1] != 'M')
        throw std::runtime_error("the file is no bitmap (BMP)");
    if (bytes.size() < kFileHeadBytes + kCoreHeadBytes) throw NoSense();
    BmpHead head;
    const uint32_t headBytes = Little32(bytes, 14);
    const bool isCore = headBytes == kCoreHeadBytes;
    if (!isCore && (headBytes < kInfoHeadBytes || headBytes > kMaxHeadBytes)) throw NoSense();
    if (bytes.size() < kFileHeadBytes + headBytes) throw NoSense();
    ReadSides(bytes, isCore, head);
    head.bits = Little16(bytes, isCore ? 24 : 28);
    head.entryBytes = isCore ? 3 : 4;
    if (!isCore) {
        head.packing = Little32(bytes, 30);
        head.colours = Little32(bytes, 46);
    }
    if (head.colours == 0) head.colours = kMaxColours;
    head.headEnd = kFileHeadBytes + headBytes;
    head.pixels = Little32(bytes, 10);
    return head;
}

// What is read, and in which words the rest is refused.
void TestKind(const std::vector<uint8_t>& bytes, const BmpHead& head) {
    if (head.packing == kRunLength8 || head.packing == kRunLength4)
        throw std::runtime_error("the bitmap is packed by run lengths (RLE); save it without packing");
    if (head.bits == 1 || head.bits == 4 || head.bits == 16)
        throw std::runtime_error("the bitmap has " + std::to_string(head.bits) +
                                 " bits a pixel; save it with 8 bits grey");
    if (head.bits != 8 && head.bits != 24 && head.bits != 32) throw NoSense();
    if (head.packing == kMasks && head.bits == 32)
        TestMasks(bytes, static_cast<uint32_t>(head.headEnd - kFileHeadBytes));
    else if (head.packing != kPlain)
        throw std::runtime_error("the bitmap is packed in a way that is not read; save it without packing");
}

size_t RowBytes(const BmpHead& head) {
    return (static_cast<size_t>(head.width) * head.bits + 31) / 32 * 4;  // rows end at multiples of 4 bytes
}

void TestSize(const std::vector<uint8_t>& bytes, const BmpHead& head) {
    const FrameSize size{head.width, head.height};
    if (!IsUsableSize(size))
        throw std::runtime_error("the bitmap tells an unusable size, " + FormatFrameSize(size));
    if (head.pixels < head.headEnd || head.pixels > bytes.size()) throw NoSense();
    const size_t needed = RowBytes(head) * static_cast<size_t>(head.height);
    if (bytes.size() - head.pixels < needed)
        throw std::runtime_error("the bitmap of " + FormatFrameSize(size) + " should hold " +
                                 std::to_string(needed) + " bytes of pixels, it holds " +
                                 std::to_string(bytes.size() - head.pixels));
}

std::vector<uint8_t> ReadGreyPalette(const std::vector<uint8_t>& bytes, const BmpHead& head) {
    // The oldest head tells no number of colours: the palette fills the room before the pixels.
    size_t colours = head.colours;
    if (head.entryBytes == 3) colours = std::min<size_t>((head.pixels - head.headEnd) / 3, kMaxColours);
    if (colours > kMaxColours || head.headEnd + colours * head.entryBytes > head.pixels) throw NoSense();
    std::vector<uint8_t> greys;
    for (size_t i = 0; i < colours; ++i) {
        const size_t at = head.headEnd + i * head.entryBytes;
        if (bytes[at] != bytes[at + 1] || bytes[at] != bytes[at + 2])
            throw std::runtime_error("the bitmap's palette has colours; save it with 8 bits grey");
        greys.push_back(bytes[at]);
    }
    return greys;
}

const uint8_t* RowOf(const std::vector<uint8_t>& bytes, const BmpHead& head, int32_t y) {
    const int32_t stored = head.isTopDown ? y : head.height - 1 - y;
    return bytes.data() + head.pixels + static_cast<size_t>(stored) * RowBytes(head);
}

void ReadByPalette(const std::vector<uint8_t>& bytes, const BmpHead& head, Frame& frame) {
    const std::vector<uint8_t> greys = ReadGreyPalette(bytes, head);
    size_t i = 0;
    for (int32_t y = 0; y < head.height; ++y) {
        const uint8_t* const row = RowOf(bytes, head, y);
        for (int32_t x = 0; x < head.width; ++x, ++i) {
            if (row[x] >= greys.size())
                throw std::runtime_error("a pixel of the bitmap names colour " + std::to_string(row[x]) +
                                         ", the palette has " + std::to_string(greys.size()));
            frame.pixels[i] = greys[row[x]];
        }
    }
}

void ReadGreyColours(const std::vector<uint8_t>& bytes, const BmpHead& head, Frame& frame) {
    const size_t pixelBytes = head.bits / 8;
    size_t i = 0;
    for (int32_t y = 0; y < head.height; ++y) {
        const uint8_t* pixel = RowOf(bytes, head, y);
        for (int32_t x = 0; x < head.width; ++x, ++i, pixel += pixelBytes) {
            if (pixel[0] != pixel[1] || pixel[0] != pixel[2])
                throw std::runtime_error("the bitmap is a colour picture; save it with 8 bits grey");
            frame.pixels[i] = pixel[0];
        }
    }
}

}  // namespace

DecodedFrame DecodeBmp(const std::vector<uint8_t>& bytes) {
    const BmpHead head = ReadHead(bytes);
    TestKind(bytes, head);
    TestSize(bytes, head);
    DecodedFrame frame;
    frame.bits = 8;
    frame.width = head.width;
    frame.height = head.height;
    frame.pixels.resize(PixelCount(head.width, head.height));
    if (head.bits == 8)
        ReadByPalette(bytes, head, frame);
    else
        ReadGreyColours(bytes, head, frame);
    return frame;
}

}  // namespace vastrelline
