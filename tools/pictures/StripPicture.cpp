#include "pictures/StripPicture.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vastrelline {
namespace {

constexpr uint8_t kGround = 40;  // neutral and dark, as in a reading room
constexpr uint8_t kInk = 225;
constexpr uint8_t kFaintInk = 150;

constexpr int32_t kMargin = 16;
constexpr int32_t kGap = 12;
constexpr int32_t kLetterScale = 2;
constexpr int32_t kLineHeight = 20;
constexpr int32_t kCaptionHeight = 3 * kLineHeight + 8;
constexpr int32_t kStepWidth = 180;
constexpr int32_t kLargeHeight = 640;
constexpr size_t kStepsInRow = 8;

struct Size {
    int32_t width;
    int32_t height;
};

int32_t Proportional(int32_t side, int32_t of, int32_t to) {
    return std::max<int32_t>(1, static_cast<int32_t>((int64_t{side} * to + of / 2) / of));
}

// Not larger than the picture itself.
Size SizeOfWidth(const Canvas& picture, int32_t width) {
    const int32_t w = std::min(width, picture.Width());
    return {w, Proportional(picture.Height(), picture.Width(), w)};
}

Size SizeOfHeight(const Canvas& picture, int32_t height) {
    const int32_t h = std::min(height, picture.Height());
    return {Proportional(picture.Width(), picture.Height(), h), h};
}

// Cuts a text at blanks into lines that fit.
std::vector<std::string> Wrap(const std::string& text, int32_t width) {
    std::vector<std::string> lines{""};
    size_t at = 0;
    while (at < text.size()) {
        const size_t end = std::min(text.find(' ', at), text.size());
        const std::string word = text.substr(at, end - at);
        const std::string longer = lines.back().empty() ? word : lines.back() + " " + word;
        if (lines.back().empty() || Canvas::TextWidth(longer, kLetterScale) <= width)
            lines.back() = longer;
        else
            lines.push_back(word);
        at = end + 1;
    }
    return lines;
}

void WriteCaption(Canvas& canvas, const CaptionedPicture& picture, int32_t x, int32_t y, int32_t width) {
    for (const std::string& line : Wrap(picture.title, width)) {
        const bool fits = Canvas::TextWidth(line, kLetterScale) <= width;
        canvas.Write(line, x, y, fits ? kLetterScale : 1, kInk);
        y += kLineHeight;
    }
    canvas.Write(picture.detail, x, y, kLetterScale, kFaintInk);
}

void PasteWithCaption(Canvas& canvas, const CaptionedPicture& picture, int32_t x, int32_t y, Size size) {
    canvas.Paste(Shrink(picture.picture, size.width, size.height), x, y);
    WriteCaption(canvas, picture, x, y + size.height + 8, size.width);
}

}  // namespace

Canvas DrawStrip(const CaptionedPicture& before, const CaptionedPicture& after,
                 const std::vector<CaptionedPicture>& steps) {
    const Size large = SizeOfHeight(before.picture, kLargeHeight);
    const Size small = SizeOfWidth(before.picture, kStepWidth);
    // Rows of one length, as far as that goes: no single picture is left over for the last one.
    const size_t rowCount = (steps.size() + kStepsInRow - 1) / kStepsInRow;
    const size_t inRow = rowCount == 0 ? 1 : (steps.size() + rowCount - 1) / rowCount;
    const auto rows = static_cast<int32_t>(rowCount);
    const auto columns = static_cast<int32_t>(inRow);
    const int32_t largeWidth = 2 * large.width + kGap;
    // Narrow pictures still have room for their words.
    const int32_t stepWidth = std::max(small.width, kStepWidth / 2);
    const int32_t stepsWidth = columns * stepWidth + (columns - 1) * kGap;
    const int32_t width = std::max(largeWidth, stepsWidth) + 2 * kMargin;
    const int32_t largeBlock = large.height + kCaptionHeight;
    const int32_t stepBlock = small.height + kCaptionHeight;

    Canvas canvas(width, 2 * kMargin + largeBlock + rows * stepBlock, kGround);
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
