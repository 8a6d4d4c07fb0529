#include "formats/RawFormat.h"

#include <cstddef>
#include <stdexcept>
#include <string>

namespace vastrelline {

void TestRawSize(uint64_t byteCount, FrameSize size) {
    const uint64_t expected = 2 * uint64_t{PixelCount(size.width, size.height)};
    if (byteCount != expected)
        throw std::runtime_error("a raw frame of " + FormatFrameSize(size) + " has " +
                                 std::to_string(expected) + " bytes, the file has " +
                                 std::to_string(byteCount));
}

Frame DecodeRaw(const std::vector<uint8_t>& bytes, FrameSize size) {
    TestRawSize(bytes.size(), size);
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
