// SPDX-License-Identifier: Apache-2.0
#include "pictures/Canvas.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <utility>

#include "pictures/DotLetters.h"

namespace vastrelline {
namespace {

constexpr int64_t kMostPixels = int64_t{1} << 28;

// The source pixels that pixel `i` of `count` covers, of `size` in all: at least one.
struct Covered {
    int32_t begin;
    int32_t end;
};

Covered CoveredBy(int32_t i, int32_t count, int32_t size) {
    const auto begin = static_cast<int32_t>(int64_t{i} * size / count);
    const auto end = static_cast<int32_t>((int64_t{i + 1} * size + count - 1) / count);
    return {begin, std::max(begin + 1, std::min(end, size))};
}

uint8_t Mean(const Canvas& picture, Covered columns, Covered rows) {
    uint64_t sum = 0;
    for (int32_t y = rows.begin; y < rows.end; ++y)
        for (int32_t x = columns.begin; x < columns.end; ++x) sum += picture.LevelAt(x, y);
    const uint64_t count =
        static_cast<uint64_t>(columns.end - columns.begin) * static_cast<uint64_t>(rows.end - rows.begin);
    return static_cast<uint8_t>((sum + count / 2) / count);
}

}  // namespace

Canvas::Canvas(int32_t width, int32_t height, uint8_t background) : width_(width), height_(height) {
    if (width < 1 || height < 1 || int64_t{width} * height > kMostPixels)
        throw std::length_error("a picture of this size cannot be drawn");
    levels_.assign(static_cast<size_t>(width) * static_cast<size_t>(height), background);
}

Canvas::Canvas(int32_t width, int32_t height, std::vector<uint8_t> levels)
    : width_(width), height_(height), levels_(std::move(levels)) {
    if (width < 1 || height < 1 || levels_.size() != static_cast<size_t>(width) * static_cast<size_t>(height))
        throw std::length_error("a picture needs a level for each pixel");
}

uint8_t Canvas::LevelAt(int32_t x, int32_t y) const {
    return levels_[static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x)];
}

void Canvas::SetLevel(int32_t x, int32_t y, uint8_t level) {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return;
    levels_[static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x)] = level;
}

void Canvas::Paste(const Canvas& picture, int32_t x, int32_t y) {
    for (int32_t row = 0; row < picture.height_; ++row)
        for (int32_t column = 0; column < picture.width_; ++column)
            SetLevel(x + column, y + row, picture.LevelAt(column, row));
}

void Canvas::Write(std::string_view text, int32_t x, int32_t y, int32_t scale, uint8_t level) {
    for (const char letter : text) {
        const DotLetter& dots = DotsOf(letter);
        for (int32_t row = 0; row < kDotRows * scale; ++row)
            for (int32_t column = 0; column < kDotColumns * scale; ++column)
                if (dots.HasDot(column / scale, row / scale)) SetLevel(x + column, y + row, level);
        x += (kDotColumns + 1) * scale;
    }
}

int32_t Canvas::TextWidth(std::string_view text, int32_t scale) {
    const auto letters = static_cast<int32_t>(text.size());
    return letters == 0 ? 0 : (letters * (kDotColumns + 1) - 1) * scale;
}

Canvas Shrink(const Canvas& picture, int32_t width, int32_t height) {
    Canvas small(width, height, 0);
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x)
            small.SetLevel(
                x, y,
                Mean(picture, CoveredBy(x, width, picture.Width()), CoveredBy(y, height, picture.Height())));
    return small;
}

}  // namespace vastrelline
