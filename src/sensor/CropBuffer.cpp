// SPDX-License-Identifier: Apache-2.0
#include "sensor/CropBuffer.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>

#include "pixels/AllocFrame.h"

namespace vastrelline {

namespace {

bool IsElementType(ElementType type) {
    return type >= ElementType::Unsigned16 && type <= ElementType::Unsigned8;
}

// Bytes of one element; 2 for a value that is no ElementType.
size_t ElementSize(ElementType type) {
    switch (type) {
        case ElementType::Signed32:
            return sizeof(int32_t);
        case ElementType::Float64:
            return sizeof(double);
        case ElementType::Unsigned8:
            return sizeof(uint8_t);
        case ElementType::Unsigned16:
        case ElementType::Signed16:
            break;
    }
    return sizeof(uint16_t);
}

}  // namespace

ScratchVector<std::byte> CropBuffer(const void* source, int32_t sourceWidth, int32_t sourceHeight,
                                    int32_t left, int32_t top, int32_t width, int32_t height,
                                    ElementType elementType) {
    const size_t size = ElementSize(elementType);
    const int64_t rowBytes = int64_t{width} * static_cast<int64_t>(size);
    if (rowBytes > std::numeric_limits<int32_t>::max()) throw std::length_error("CropBuffer: too large");
    ScratchVector<std::byte> crop = AllocZeroed<std::byte>(static_cast<int32_t>(rowBytes), height);
    if (!IsElementType(elementType)) return crop;
    // The columns and rows of the crop that lie inside the source.
    const int64_t firstX = std::max<int64_t>(0, -static_cast<int64_t>(left));
    const int64_t endX = std::min<int64_t>(width, static_cast<int64_t>(sourceWidth) - left);
    const int64_t firstY = std::max<int64_t>(0, -static_cast<int64_t>(top));
    const int64_t endY = std::min<int64_t>(height, static_cast<int64_t>(sourceHeight) - top);
    if (firstX >= endX) return crop;
    const auto* bytes = static_cast<const std::byte*>(source);
    for (int64_t y = firstY; y < endY; ++y) {
        const auto from = static_cast<size_t>((y + top) * sourceWidth + left + firstX);
        const auto to = static_cast<size_t>(y * width + firstX);
        std::memcpy(&crop[to * size], bytes + from * size, static_cast<size_t>(endX - firstX) * size);
    }
    return crop;
}

}  // namespace vastrelline
