// SPDX-License-Identifier: Apache-2.0
#include "pictures/StripPicture.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace vastrelline {
namespace {

constexpr int32_t kMargin = 16;
constexpr int32_t kGap = 12;
constexpr int32_t kCaptionHeight = 3 * kCaptionLineHeight + 8;
constexpr int32_t kStepWidth = 180;
constexpr int32_t kLargeHeight = 640;
constexpr size_t kStepsInRow = 8;

// The other side is as long as it takes.
constexpr int32_t kAnyLength = 1 << 28;

void PasteWithCaption(Canvas& canvas, const CaptionedPicture& picture, int32_t x, int32_t y,
                      PictureSize size) {
    canvas.Paste(Shrink(picture.picture, size.width, size.height), x, y);
    // Narrow pictures still have room for their words.
    WriteCaption(canvas, picture, x, y + size.height + 8, std::max(size.width, kStepWidth / 2));
}

}  // namespace

Canvas DrawStrip(const CaptionedPicture& before, const CaptionedPicture& after,
                 const std::vector<CaptionedPicture>& steps) {
    const PictureSize large = FitInto(before.picture, {kAnyLength, kLargeHeight});
    const PictureSize small = FitInto(before.picture, {kStepWidth, kAnyLength});
    // Rows of one length, as far as that goes: no single picture is left over for the last one.
    const size_t rowCount = (steps.size() + kStepsInRow - 1) / kStepsInRow;
    const size_t inRow = rowCount == 0 ? 1 : (steps.size() + rowCount - 1) / rowCount;
    const auto rows = static_cast<int32_t>(rowCount);
    const auto columns = static_cast<int32_t>(inRow);
    const int32_t largeWidth = 2 * large.width + kGap;
    const int32_t stepWidth = std::max(small.width, kStepWidth / 2);
    const int32_t stepsWidth = columns * stepWidth + (columns - 1) * kGap;
    const int32_t width = std::max(largeWidth, stepsWidth) + 2 * kMargin;
    const int32_t largeBlock = large.height + kCaptionHeight;
    const int32_t stepBlock = small.height + kCaptionHeight;

    Canvas canvas(width, 2 * kMargin + largeBlock + rows * stepBlock, kGroundLevel);
    const int32_t left = (width - largeWidth) / 2;
    PasteWithCaption(canvas, before, left, kMargin, large);
    PasteWithCaption(canvas, after, left + large.width + kGap, kMargin, large);
    const int32_t stepsLeft = (width - stepsWidth) / 2;
    for (size_t i = 0; i < steps.size(); ++i) {
        const auto column = static_cast<int32_t>(i % inRow);
        const auto row = static_cast<int32_t>(i / inRow);
        PasteWithCaption(canvas, steps[i], stepsLeft + column * (stepWidth + kGap),
                         kMargin + largeBlock + row * stepBlock, small);
    }
    return canvas;
}

}  // namespace vastrelline
