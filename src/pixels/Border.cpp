// SPDX-License-Identifier: Apache-2.0
#include "pixels/Border.h"

#include <algorithm>

#include "pixels/AllocFrame.h"
#include "pixels/FrameView.h"

namespace vastrelline {

namespace {

// Where the image lies inside the padded frame.
struct Margins {
    int32_t left;
    int32_t top;
};

std::optional<Margins> MarginsOf(BorderMode mode, int32_t padWidth, int32_t padHeight) {
    switch (mode) {
        case BorderMode::BorderTrailing:
            return Margins{0, 0};
        case BorderMode::BorderCentred:
            return Margins{padWidth / 2, padHeight / 2};
    }
    return std::nullopt;
}

}  // namespace

std::optional<ScratchVector<uint16_t>> ExtendImage(const uint16_t* source, int32_t width, int32_t height,
                                                   int32_t padWidth, int32_t padHeight, BorderMode mode) {
    if (source == nullptr || (padWidth < 0 && padHeight < 0)) return std::nullopt;
    ScratchVector<uint16_t> padded = AllocFrame<uint16_t>(width + padWidth, height + padHeight);
    const FrameView<const uint16_t> from(source, width, height);
    if (padWidth == 0 && padHeight == 0) {
        std::copy(from.begin(), from.end(), padded.begin());
        return padded;
    }
    const std::optional<Margins> margins = MarginsOf(mode, padWidth, padHeight);
    if (!margins || from.Count() == 0) return AllocZeroed<uint16_t>(width + padWidth, height + padHeight);

    // Every row and column of the result takes the nearest one of the source. With a negative pad the margin
    // is negative too: the first columns of the source then lie outside the result.
    const FrameView<uint16_t> to(padded.data(), width + padWidth, height + padHeight);
    const int32_t left = std::max(margins->left, 0);
    const int32_t skipped = left - margins->left;
    const int32_t copied = std::min(width - skipped, to.Width() - left);
    for (int32_t y = 0; y < to.Height(); ++y) {
        const uint16_t* sourceRow = from.Row(std::clamp(y - margins->top, 0, height - 1));
        uint16_t* row = to.Row(y);
        std::fill_n(row, left, sourceRow[0]);
        std::copy_n(sourceRow + skipped, copied, row + left);
        std::fill(row + left + copied, row + to.Width(), sourceRow[width - 1]);
    }
    return padded;
}

void FillTrailingBorder(const FrameView<uint16_t>& padded, int32_t width, int32_t height) {
    for (int32_t y = 0; y < height; ++y) {
        uint16_t* const row = padded.Row(y);
        std::fill(row + width, row + padded.Width(), row[width - 1]);
    }
    for (int32_t y = height; y < padded.Height(); ++y)
        std::copy_n(padded.Row(height - 1), padded.Width(), padded.Row(y));
}

void CropImage(const uint16_t* padded, uint16_t* destination, int32_t paddedWidth, int32_t paddedHeight,
               int32_t padWidth, int32_t padHeight, BorderMode mode) {
    if (padded == nullptr || (padWidth < 0 && padHeight < 0)) return;
    const FrameView<const uint16_t> from(padded, paddedWidth, paddedHeight);
    if (padWidth == 0 && padHeight == 0) {
        std::copy(from.begin(), from.end(), destination);
        return;
    }
    const std::optional<Margins> margins = MarginsOf(mode, padWidth, padHeight);
    // A single negative pad would read beyond the padded rows.
    if (!margins || padWidth < 0 || padHeight < 0 || padWidth > paddedWidth || padHeight > paddedHeight)
        return;
    const FrameView<uint16_t> to(destination, paddedWidth - padWidth, paddedHeight - padHeight);
    for (int32_t y = 0; y < to.Height(); ++y) {
        std::copy_n(from.Row(y + margins->top) + margins->left, to.Width(), to.Row(y));
    }
}

}  // namespace vastrelline
