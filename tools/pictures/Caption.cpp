// SPDX-License-Identifier: Apache-2.0
#include "pictures/Caption.h"

#include <algorithm>
#include <cstddef>

namespace vastrelline {
namespace {

int32_t Proportional(int32_t side, int32_t of, int32_t to) {
    return std::max<int32_t>(1, static_cast<int32_t>((int64_t{side} * to + of / 2) / of));
}

// How many letters fit; at least one, so that every text comes to its end.
size_t LettersIn(int32_t width) {
    size_t count = 1;
    while (Canvas::TextWidth(std::string(count + 1, ' '), kCaptionScale) <= width) ++count;
    return count;
}

std::vector<std::string> WrapLine(const std::string& text, size_t most) {
    std::vector<std::string> lines{""};
    size_t at = 0;
    while (at < text.size()) {
        const size_t end = std::min(text.find(' ', at), text.size());
        std::string word = text.substr(at, end - at);
        if (!lines.back().empty() && lines.back().size() + 1 + word.size() <= most) {
            lines.back() += " " + word;
        } else {
            if (!lines.back().empty()) lines.emplace_back();
            for (; word.size() > most; word.erase(0, most)) {
                lines.back() = word.substr(0, most);
                lines.emplace_back();
            }
            lines.back() = word;
        }
        at = end + 1;
    }
    return lines;
}

}  // namespace

PictureSize FitInto(const Canvas& picture, PictureSize box) {
    const int32_t width = std::min(picture.Width(), box.width);
    const int32_t height = Proportional(picture.Height(), picture.Width(), width);
    if (height <= box.height) return {width, height};
    return {std::min(width, Proportional(picture.Width(), picture.Height(), box.height)), box.height};
}

void PasteSmall(Canvas& canvas, const CaptionedPicture& picture, PictureSize size, int32_t x, int32_t y) {
    constexpr int32_t kLine = 4;
    if (picture.isMarked)
        canvas.Paste(Canvas(size.width + 2 * kLine, size.height + 2 * kLine, kInkLevel), x - kLine,
                     y - kLine);
    canvas.Paste(Shrink(picture.picture, size.width, size.height), x, y);
}

std::vector<std::string> WrapCaption(const std::string& text, int32_t width) {
    std::vector<std::string> lines;
    const size_t most = LettersIn(width);
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find('\n', at), text.size());
        for (std::string& line : WrapLine(text.substr(at, end - at), most)) lines.push_back(std::move(line));
        at = end + 1;
    }
    return lines;
}

int32_t CaptionHeight(const CaptionedPicture& picture, int32_t width) {
    const size_t lines = WrapCaption(picture.title, width).size() + WrapCaption(picture.detail, width).size();
    return static_cast<int32_t>(lines) * kCaptionLineHeight;
}

void WriteCaption(Canvas& canvas, const CaptionedPicture& picture, int32_t x, int32_t y, int32_t width) {
    for (const std::string& line : WrapCaption(picture.title, width)) {
        canvas.Write(line, x, y, kCaptionScale, kInkLevel);
        y += kCaptionLineHeight;
    }
    for (const std::string& line : WrapCaption(picture.detail, width)) {
        canvas.Write(line, x, y, kCaptionScale, kFaintInkLevel);
        y += kCaptionLineHeight;
    }
}

}  // namespace vastrelline
