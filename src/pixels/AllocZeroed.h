#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <vector>

namespace vastrelline {

// Every buffer of width * height elements of up to 8 bytes keeps below this many bytes.
inline constexpr uint64_t kBufferByteLimit = uint64_t{1} << 32;

// A zeroed block of width * height elements, row after row; a one-dimensional table has height 1.
//
// Errors   std::length_error for a negative side and for 2^32 bytes or more
template <typename Element>
std::vector<Element> AllocZeroed(int32_t width, int32_t height) {
    if (width < 0 || height < 0) throw std::length_error("AllocZeroed: negative size");
    const uint64_t count = static_cast<uint64_t>(width) * static_cast<uint64_t>(height);
    if (count > (kBufferByteLimit - 1) / sizeof(Element)) throw std::length_error("AllocZeroed: too large");
    return std::vector<Element>(static_cast<size_t>(count));
}

}  // namespace vastrelline
