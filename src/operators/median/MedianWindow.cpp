// SPDX-License-Identifier: Apache-2.0
#include "operators/median/MedianWindow.h"

#include <algorithm>
#include <cstddef>

#include "operators/median/MedianFilter.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"

namespace vastrelline {

namespace {

constexpr int32_t kSuccess = 1;

// Whether a window of this size has its place anywhere along a line.
bool Fits(int32_t size, int32_t length) { return size >= 1 && size / 2 < length - size / 2; }

// Filters in place, a band of rows at a time, from a copy of the rows that the band sees. A copy of the whole
// frame would leave the cache and cost as much as the filter of a small window.
void FilterInPlace(const FrameView<uint16_t>& frame, int32_t windowWidth, int32_t windowHeight) {
    constexpr int32_t kLeastRowsInBand = 64;
    if (windowWidth == 1 && windowHeight == 1) return;  // each pixel is its own middle
    if (!Fits(windowWidth, frame.Width()) || !Fits(windowHeight, frame.Height())) return;
    const auto stride = static_cast<size_t>(frame.Width());
    const int32_t half = windowHeight / 2;
    const int32_t rowsInBand = std::max(kLeastRowsInBand, windowHeight);
    const size_t sharedPixels = static_cast<size_t>(2 * half) * stride;
    ScratchVector<uint16_t> before;  // the rows from first - half to last + half, as they came
    int32_t copiedRows = 0;
    for (int32_t first = half; first < frame.Height() - half; first += rowsInBand) {
        const int32_t last = std::min(first + rowsInBand, frame.Height() - half) - 1;
        // What this band shares with the last one is the end of the last copy: some of it is filtered by now.
        const size_t shared = std::min(before.size(), sharedPixels);
        before.erase(before.begin(), before.end() - static_cast<std::ptrdiff_t>(shared));
        before.insert(before.end(), frame.Row(copiedRows), frame.Row(last + half) + stride);
        copiedRows = last + half + 1;
        FilterMedian({before.data(), frame.Row(first - half), frame.Width(), last - first + 1 + 2 * half,
                      windowWidth, windowHeight, half, half + last - first});
    }
}

// Copies the pixels that have no window.
void CopyMargins(const FrameView<const uint16_t>& source, const FrameView<uint16_t>& destination,
                 int32_t half) {
    for (int32_t y = 0; y < source.Height(); ++y) {
        const uint16_t* row = source.Row(y);
        const uint16_t* end = row + source.Width();
        uint16_t* out = destination.Row(y);
        if (y < half || y >= source.Height() - half) {
            std::copy(row, end, out);
        } else {
            std::copy_n(row, half, out);
            std::copy_n(end - half, half, out + (source.Width() - half));
        }
    }
}

}  // namespace

int32_t WidenMedianMask(int32_t mask) {
    const int32_t atLeastThree = std::max(mask, 3);
    return atLeastThree % 2 == 0 ? atLeastThree + 1 : atLeastThree;
}

int32_t MedianRows(uint16_t* pixels, int32_t width, int32_t height, int32_t mask) {
    FilterInPlace({pixels, width, height}, WidenMedianMask(mask), 1);
    return kSuccess;
}

int32_t MedianColumns(uint16_t* pixels, int32_t width, int32_t height, int32_t mask) {
    FilterInPlace({pixels, width, height}, 1, WidenMedianMask(mask));
    return kSuccess;
}

int32_t MedianSquareRange(const uint16_t* source, uint16_t* destination, int32_t width, int32_t height,
                          int32_t mask, int32_t firstRow, int32_t lastRow) {
    const int32_t size = WidenMedianMask(mask);
    FilterMedian({source, destination, width, height, size, size, firstRow, lastRow});
    return kSuccess;
}

int32_t MedianSquare(uint16_t* pixels, int32_t width, int32_t height, int32_t mask) {
    FilterInPlace({pixels, width, height}, mask, mask);
    return kSuccess;
}

int32_t MedianSquareToBuffer(const uint16_t* source, uint16_t* destination, int32_t width, int32_t height,
                             int32_t mask) {
    const FrameView<const uint16_t> from(source, width, height);
    if (mask == 1 || !Fits(mask, width) || !Fits(mask, height)) {
        std::copy(from.begin(), from.end(), destination);
        return kSuccess;
    }
    CopyMargins(from, {destination, width, height}, mask / 2);
    FilterMedian({source, destination, width, height, mask, mask, 0, height - 1});
    return kSuccess;
}

int32_t Median3x3ToBuffer(const uint16_t* source, uint16_t* destination, int32_t width, int32_t height) {
    return MedianSquareToBuffer(source, destination, width, height, 3);
}

}  // namespace vastrelline
