// SPDX-License-Identifier: Apache-2.0
#include "report/Bitmap.h"

#include <cstddef>
#include <new>

#include "platform/MessageDialog.h"
#include "platform/WholeFile.h"
#include "report/CImageM.h"

namespace vastrelline {

namespace {

constexpr uint32_t kFileHeaderBytes = 14;
constexpr uint32_t kInfoHeaderBytes = 40;
constexpr uint32_t kGreys = 256;
constexpr uint32_t kPixelOffset = kFileHeaderBytes + kInfoHeaderBytes + kGreys * 4;

void Append16(std::string& bytes, uint32_t value) {
    bytes += static_cast<char>(value & 0xFFU);
    bytes += static_cast<char>((value >> 8U) & 0xFFU);
}

void Append32(std::string& bytes, uint32_t value) {
    Append16(bytes, value & 0xFFFFU);
    Append16(bytes, value >> 16U);
}

std::string MakeHeaders(uint32_t width, uint32_t height, uint32_t pixelBytes) {
    std::string bytes = "BM";
    Append32(bytes, kPixelOffset + pixelBytes);
    Append32(bytes, 0);  // two reserved fields
    Append32(bytes, kPixelOffset);
    Append32(bytes, kInfoHeaderBytes);
    Append32(bytes, width);
    Append32(bytes, height);  // positive: rows bottom-up
    Append16(bytes, 1);       // planes
    Append16(bytes, 8);       // bits per pixel
    Append32(bytes, 0);       // no compression
    Append32(bytes, 0);       // image size: not needed without compression
    Append32(bytes, 0);       // horizontal resolution
    Append32(bytes, 0);       // vertical resolution
    Append32(bytes, kGreys);  // colours used
    Append32(bytes, 0);       // important colours
    for (uint32_t grey = 0; grey < kGreys; ++grey) Append32(bytes, grey * 0x010101U);
    return bytes;
}

// Only called with sizes that the format can tell.
std::string MakeBitmap(size_t rowBytes, size_t width, size_t height, const uint8_t* pixels) {
    std::string bytes = MakeHeaders(static_cast<uint32_t>(width), static_cast<uint32_t>(height),
                                    static_cast<uint32_t>(rowBytes * height));
    bytes.reserve(kPixelOffset + rowBytes * height);
    for (size_t row = height; row-- > 0;) {
        bytes.append(reinterpret_cast<const char*>(pixels + row * rowBytes), width);
        bytes.append(rowBytes - width, '\0');
    }
    return bytes;
}

// The empty file is what tells later that there was an attempt. Where not even that can be made, the caller
// has a code, and nobody is asked to dismiss a message.
int32_t LeaveEmptyFile(const std::wstring& path) {
    if (SaveWholeFile(path, "")) ShowMessage(L"No Image to Save !", MessageIcon::None);
    return 0;
}

}  // namespace

int32_t SaveBitmap8(const std::wstring& path, int32_t rowBytes, int32_t width, int32_t height,
                    const uint8_t* pixels) {
    if (pixels == nullptr) return LeaveEmptyFile(path);
    if (width < 0 || height < 0 || rowBytes < width) return 0;
    const size_t stride = static_cast<size_t>(rowBytes);
    const size_t rows = static_cast<size_t>(height);
    if (uint64_t{stride} * rows > UINT32_MAX - kPixelOffset) return 0;  // more than the format can tell
    std::string bytes;
    try {
        bytes = MakeBitmap(stride, static_cast<size_t>(width), rows, pixels);
    } catch (const std::bad_alloc&) {
        return LeaveEmptyFile(path);
    }
    return SaveWholeFile(path, bytes) ? 1 : 0;
}

int32_t SaveFrameBitmap(const uint16_t* frame, int32_t width, int32_t height, const std::wstring& path) {
    const CImageM image(frame, width, height, 16, 16, 2047, 4096, 0, L"", 0, 0, 1.0);
    return SaveBitmap8(path, image.DisplayStride(), image.Width(), image.Height(), image.DisplayRow(0));
}

}  // namespace vastrelline
