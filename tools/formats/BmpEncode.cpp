// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <stdexcept>

#include "formats/BmpFormat.h"

namespace vastrelline {
namespace {

constexpr uint32_t kGreys = 256;
constexpr uint32_t kInfoHeadBytes = 40;
constexpr uint32_t kHeadBytes = 14 + kInfoHeadBytes + kGreys * 4;

void Append16(std::vector<uint8_t>& bytes, uint32_t value) {
    bytes.push_back(static_cast<uint8_t>(value & 0xFFU));
    bytes.push_back(static_cast<uint8_t>((value >> 8U) & 0xFFU));
}

void Append32(std::vector<uint8_t>& bytes, uint32_t value) {
    Append16(bytes, value & 0xFFFFU);
    Append16(bytes, value >> 16U);
}

}  // namespace

std::vector<uint8_t> EncodeBmp8(const std::vector<uint8_t>& levels, int32_t width, int32_t height) {
    const size_t side = static_cast<size_t>(width);
    const size_t rowBytes = (side + 3) / 4 * 4;
    const uint64_t pixelBytes = uint64_t{rowBytes} * static_cast<uint64_t>(height);
    if (pixelBytes > UINT32_MAX - kHeadBytes) throw std::runtime_error("a bitmap ends at 4 GiB");
    std::vector<uint8_t> bytes{'B', 'M'};
    bytes.reserve(kHeadBytes + static_cast<size_t>(pixelBytes));
    Append32(bytes, kHeadBytes + static_cast<uint32_t>(pixelBytes));
    Append32(bytes, 0);  // two reserved fields
    Append32(bytes, kHeadBytes);
    Append32(bytes, kInfoHeadBytes);
    Append32(bytes, static_cast<uint32_t>(width));
    Append32(bytes, static_cast<uint32_t>(height));              // positive: rows from the bottom
    Append16(bytes, 1);                                          // planes
    Append16(bytes, 8);                                          // bits a pixel
    for (int field = 0; field < 4; ++field) Append32(bytes, 0);  // no packing; no size and resolutions told
    Append32(bytes, kGreys);
    Append32(bytes, 0);  // all colours matter
    for (uint32_t grey = 0; grey < kGreys; ++grey) Append32(bytes, grey * 0x010101U);
    for (size_t row = static_cast<size_t>(height); row-- > 0;) {
        const auto start = levels.begin() + static_cast<ptrdiff_t>(row * side);
        bytes.insert(bytes.end(), start, start + width);
        bytes.insert(bytes.end(), rowBytes - side, 0);
    }
    return bytes;
}

}  // namespace vastrelline
