// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "pixels/ScratchVector.h"

namespace vastrelline {

// Every buffer of width * height elements of up to 8 bytes keeps below this many bytes.
inline constexpr uint64_t kBufferByteLimit = uint64_t{1} << 32;

// How many elements a block of this size has; a one-dimensional table has height 1.
//
// Errors   std::length_error for a negative side and for 2^32 bytes or more
template <typename Element>
size_t CountElements(int32_t width, int32_t height) {
    if (width < 0 || height < 0) throw std::length_error("CountElements: negative size");
    const uint64_t count = static_cast<uint64_t>(width) * static_cast<uint64_t>(height);
    if (count > (kBufferByteLimit - 1) / sizeof(Element)) throw std::length_error("CountElements: too large");
    return static_cast<size_t>(count);
}

// A block of width * height elements, row after row, that hold anything. Errors as CountElements.
template <typename Element>
ScratchVector<Element> AllocFrame(int32_t width, int32_t height) {
    return ScratchVector<Element>(CountElements<Element>(width, height));
}

// The same with zeros.
template <typename Element>
ScratchVector<Element> AllocZeroed(int32_t width, int32_t height) {
    return ScratchVector<Element>(CountElements<Element>(width, height), Element{});
}

}  // namespace vastrelline
