// SPDX-License-Identifier: Apache-2.0
#include "formats/RawFormat.h"

#include <cstddef>
#include <stdexcept>

#include "frames/SizeGuess.h"

namespace vastrelline {

namespace {

constexpr const char* kSayIt = "say --size WxH";

// More than that is no head that somebody put before the levels.
constexpr uint64_t kLongestHead = 65536;

}  // namespace

uint64_t RawByteCount(FrameSize size) { return 2 * uint64_t{PixelCount(size.width, size.height)}; }

RawMismatch DescribeRawMismatch(uint64_t byteCount, FrameSize size) {
    const uint64_t expected = RawByteCount(size);
    std::string text = "a raw frame of " + FormatFrameSize(size) + " has " + std::to_string(expected) +
                       " bytes, the file has " + std::to_string(byteCount);
    const std::string orSayIt = std::string(", or ") + kSayIt;
    if (byteCount * 2 == expected)
        return {text + ", half of them: those of 8 bits a pixel", "write levels of 16 bits" + orSayIt};
    if (byteCount > expected && byteCount - expected <= kLongestHead)
        return {text + ", " + std::to_string(byteCount - expected) +
                    " more, as if a head stood before the levels",
                "take it away" + orSayIt};
    const std::string sizes = ListGuessedSizes(byteCount);
    return {sizes.empty() ? text : text + ", which fit " + sizes + " at 16 bits", kSayIt};
}

Frame DecodeRaw(const std::vector<uint8_t>& bytes, FrameSize size) {
    if (bytes.size() != RawByteCount(size))
        throw std::runtime_error(DescribeRawMismatch(bytes.size(), size).what);
    const size_t count = PixelCount(size.width, size.height);
    Frame frame{size.width, size.height, std::vector<uint16_t>(count)};
    for (size_t i = 0; i < count; ++i)
        frame.pixels[i] = static_cast<uint16_t>(bytes[2 * i] | (bytes[2 * i + 1] << 8));
    return frame;
}

std::vector<uint8_t> EncodeRaw(const Frame& frame) {
    std::vector<uint8_t> bytes;
    bytes.reserve(2 * frame.pixels.size());
    for (const uint16_t pixel : frame.pixels) {
        bytes.push_back(static_cast<uint8_t>(pixel & 0xFF));
        bytes.push_back(static_cast<uint8_t>(pixel >> 8));
    }
    return bytes;
}

}  // namespace vastrelline
