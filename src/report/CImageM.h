// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "pixels/ScratchVector.h"

namespace vastrelline {

// A pixel matrix with an 8-bit rendering of it through a window.
class CImageM {
public:
    // Captions are without effect: nothing shows one.
    explicit CImageM(std::wstring_view caption) : m_caption(caption) {}
    CImageM(const void* pixels, int32_t width, int32_t height, int32_t bitsAllocated, int32_t bitsStored,
            int32_t windowCenter, int32_t windowWidth, int32_t invert, std::wstring_view caption,
            int32_t pixelType, int32_t curve, double scale);
    virtual ~CImageM() = default;
    CImageM(const CImageM&) = delete;
    CImageM& operator=(const CImageM&) = delete;
    CImageM(CImageM&&) = delete;
    CImageM& operator=(CImageM&&) = delete;

    // Gives the matrix its pixels, size and window, and renders it.
    //
    // pixels         height rows of width * bitsAllocated / 8 bytes; null leaves all pixels 0
    // height         negative: as its magnitude, and the rows count as bottom-up from then on
    // bitsStored     significant bits: the window's table ends at 2^bitsStored - 1; clamped to 0..30
    // windowCenter, windowWidth   in levels; 0 and 0 together stand for 400 and 800
    // invert         not 0: the rendering is inverted
    // pixelType      0 unsigned 16-bit, 1 signed 16-bit, 2 signed 32-bit, 3 double, 4 unsigned 8-bit
    // curve          of the window, see BuildWindowTable
    // scale          stored and never read
    // Errors         std::length_error as CountElements
    void Set(const void* pixels, int32_t width, int32_t height, int32_t bitsAllocated, int32_t bitsStored,
             int32_t windowCenter, int32_t windowWidth, int32_t invert, int32_t pixelType, int32_t curve,
             double scale);

    // Frees both rasters and makes zeroed ones of this size.
    void Allocate(int32_t width, int32_t height, int32_t bitsAllocated, int32_t bitsStored);

    // Draws the rendering. A window that is not 0, 0 is stored first.
    void Render(int32_t windowCenter, int32_t windowWidth);

    int32_t Width() const { return m_width; }
    int32_t Height() const { return m_height; }
    int32_t DisplayStride() const { return m_displayStride; }
    int32_t BottomUp() const { return m_bottomUp; }

    // Where a pixel lies in the raster.
    const std::byte* PixelAddress(int32_t row, int32_t column) const;

    // A pixel's value; 0.0 for an unknown pixel type, and where a pixel of the type would end behind its row.
    double PixelAt(int32_t row, int32_t column) const;

    // One row of the rendering, DisplayStride() bytes of which Width() are pixels.
    const uint8_t* DisplayRow(int32_t row) const;

    // Whether the rendering is equalised by its histogram; from the next Render on.
    void SetEqualize(int32_t equalize) { m_equalize = equalize; }

private:
    void EqualizeRendering();

    ScratchVector<std::byte> m_pixels;
    ScratchVector<uint8_t> m_display;
    int32_t m_width = 0;
    int32_t m_height = 0;
    int32_t m_bitsStored = 0;
    int32_t m_bitsAllocated = 0;
    int32_t m_rowBytes = 0;
    int32_t m_windowWidth = 0;
    int32_t m_windowCenter = 0;
    int32_t m_displayStride = 0;
    int32_t m_displayRows = 0;
    int32_t m_displayPad = 0;
    int32_t m_invert = 1;
    int32_t m_curve = 0;
    int32_t m_equalize = 0;
    std::wstring m_caption;  // stored and never read
    double m_scale = 1.0;
    int32_t m_pixelType = 0;
    int32_t m_bottomUp = 1;
};

}  // namespace vastrelline
