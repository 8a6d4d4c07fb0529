// SPDX-License-Identifier: Apache-2.0
#include "report/CImageM.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

#include "pixels/AllocFrame.h"
#include "pixels/Truncate.h"
#include "report/WindowTable.h"

namespace vastrelline {

namespace {

// How PixelAt reads the raster.
enum PixelType : int32_t { kUnsigned16 = 0, kSigned16 = 1, kSigned32 = 2, kFloat64 = 3, kUnsigned8 = 4 };

template <typename Pixel>
double ReadPixel(std::span<const std::byte> row, size_t column) {
    Pixel pixel{};
    // A type wider than what is allocated would read past the row's end.
    if ((column + 1) * sizeof pixel > row.size()) return 0.0;
    std::memcpy(&pixel, row.data() + column * sizeof pixel, sizeof pixel);
    return static_cast<double>(pixel);
}

// The width in bytes rounded up to whole 32-bit words.
int32_t DisplayStrideOf(int32_t width) {
    return static_cast<int32_t>((static_cast<uint32_t>(width) * 8 + 31) / 32 * 4);
}

}  // namespace

CImageM::CImageM(const void* pixels, int32_t width, int32_t height, int32_t bitsAllocated, int32_t bitsStored,
                 int32_t windowCenter, int32_t windowWidth, int32_t invert, std::wstring_view caption,
                 int32_t pixelType, int32_t curve, double scale)
    : CImageM(caption) {
    Set(pixels, width, height, bitsAllocated, bitsStored, windowCenter, windowWidth, invert, pixelType, curve,
        scale);
}

void CImageM::Set(const void* pixels, int32_t width, int32_t height, int32_t bitsAllocated,
                  int32_t bitsStored, int32_t windowCenter, int32_t windowWidth, int32_t invert,
                  int32_t pixelType, int32_t curve, double scale) {
    constexpr int32_t kUsualCenter = 400;
    constexpr int32_t kUsualWidth = 800;
    Allocate(width, height, bitsAllocated, bitsStored);
    const bool isUnset = windowCenter == 0 && windowWidth == 0;
    m_windowCenter = isUnset ? kUsualCenter : windowCenter;
    m_windowWidth = isUnset ? kUsualWidth : windowWidth;
    m_invert = invert;
    m_pixelType = pixelType;
    m_curve = curve;
    m_scale = scale;
    if (pixels != nullptr && !m_pixels.empty()) std::memcpy(m_pixels.data(), pixels, m_pixels.size());
    Render(m_windowCenter, m_windowWidth);
}

void CImageM::Allocate(int32_t width, int32_t height, int32_t bitsAllocated, int32_t bitsStored) {
    if (height < 0) {
        height = WrappingSubtract(0, height);
        m_bottomUp = 0;
    }
    m_width = width;
    m_height = height;
    m_bitsStored = bitsStored;
    m_bitsAllocated = bitsAllocated;
    m_rowBytes = static_cast<int32_t>(int64_t{width} * bitsAllocated / 8);
    m_displayStride = DisplayStrideOf(width);
    m_displayRows = height;
    m_displayPad = m_displayStride - width;
    m_pixels = AllocZeroed<std::byte>(m_rowBytes, height);
    m_display = AllocZeroed<uint8_t>(m_displayStride, m_displayRows);
}

void CImageM::Render(int32_t windowCenter, int32_t windowWidth) {
    constexpr int32_t kSignedOffset = 32768;
    constexpr int32_t kSignedBits = 16;
    constexpr int32_t kLargestBits = 30;  // the loop over the entries counts one past the last
    if (windowCenter != 0 || windowWidth != 0) {
        m_windowCenter = windowCenter;
        m_windowWidth = windowWidth;
    }
    const bool isSigned = m_pixelType == kSigned16;
    const int32_t offset = isSigned ? kSignedOffset : 0;
    const int32_t bits = isSigned ? kSignedBits : std::clamp(m_bitsStored, 0, kLargestBits);
    const int32_t topValue = (1 << bits) - 1;
    const std::vector<uint8_t> table =
        BuildWindowTable(topValue, WrappingAdd(m_windowCenter, offset), m_windowWidth, m_curve, m_invert);

    const bool isPlain = m_pixelType == kUnsigned16 && m_rowBytes == 2 * int64_t{m_width};
    for (int32_t y = 0; y < m_height; ++y) {
        uint8_t* row = m_display.data() + static_cast<size_t>(y) * static_cast<size_t>(m_displayStride);
        if (isPlain) {
            const auto* pixels = reinterpret_cast<const uint16_t*>(PixelAddress(y, 0));
            for (int32_t x = 0; x < m_width; ++x)
                row[x] = table[std::min<size_t>(pixels[x], table.size() - 1)];
            continue;
        }
        for (int32_t x = 0; x < m_width; ++x) {
            const int32_t value = WrappingAdd(TruncateToInt32(PixelAt(y, x)), offset);
            row[x] = table[static_cast<size_t>(std::clamp(value, 0, topValue))];
        }
    }
    if (m_equalize != 0) EqualizeRendering();
}

const std::byte* CImageM::PixelAddress(int32_t row, int32_t column) const {
    const size_t elementBytes = static_cast<size_t>(m_bitsAllocated / 8);
    return m_pixels.data() + static_cast<size_t>(row) * static_cast<size_t>(m_rowBytes) +
           static_cast<size_t>(column) * elementBytes;
}

double CImageM::PixelAt(int32_t row, int32_t column) const {
    const std::span<const std::byte> bytes(PixelAddress(row, 0), static_cast<size_t>(m_rowBytes));
    const auto index = static_cast<size_t>(column);
    switch (m_pixelType) {
        case kUnsigned16:
            return ReadPixel<uint16_t>(bytes, index);
        case kSigned16:
            return ReadPixel<int16_t>(bytes, index);
        case kSigned32:
            return ReadPixel<int32_t>(bytes, index);
        case kFloat64:
            return ReadPixel<double>(bytes, index);
        case kUnsigned8:
            return ReadPixel<uint8_t>(bytes, index);
        default:
            return 0.0;
    }
}

const uint8_t* CImageM::DisplayRow(int32_t row) const {
    return m_display.data() + static_cast<size_t>(row) * static_cast<size_t>(m_displayStride);
}

void CImageM::EqualizeRendering() {
    constexpr uint64_t kWhite = 255;
    if (m_width <= 0 || m_height <= 0) return;
    const size_t total = static_cast<size_t>(m_width) * static_cast<size_t>(m_height);
    std::array<uint64_t, 256> cumulative{};
    for (int32_t y = 0; y < m_height; ++y) {
        const uint8_t* row = m_display.data() + static_cast<size_t>(y) * static_cast<size_t>(m_displayStride);
        for (int32_t x = 0; x < m_width; ++x) ++cumulative[row[x]];
    }
    for (size_t i = 1; i < cumulative.size(); ++i) cumulative[i] += cumulative[i - 1];
    // One contiguous run of so many bytes as there are pixels, pads included, so that the last pixels are
    // left out where rows have pads: rendered pictures depend on it.
    for (size_t i = 0; i < total; ++i) {
        m_display[i] = static_cast<uint8_t>(cumulative[m_display[i]] * kWhite / total);
    }
}

}  // namespace vastrelline
