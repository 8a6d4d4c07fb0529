// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace vastrelline {

// A picture of 8-bit grey levels to draw on: rows from the top. What lies outside is cut off.
class Canvas {
public:
    // Errors   std::length_error for sizes below 1 or of more than 2^28 pixels
    Canvas(int32_t width, int32_t height, uint8_t background);

    // levels   width * height
    Canvas(int32_t width, int32_t height, std::vector<uint8_t> levels);

    int32_t Width() const { return width_; }
    int32_t Height() const { return height_; }
    const std::vector<uint8_t>& Levels() const { return levels_; }
    uint8_t LevelAt(int32_t x, int32_t y) const;  // inside only

    void SetLevel(int32_t x, int32_t y, uint8_t level);

    // Another picture with its upper left corner here.
    void Paste(const Canvas& picture, int32_t x, int32_t y);

    // A line of text in letters of 5 by 7 dots, each dot `scale` pixels wide, with one dot between letters.
    // Printable ASCII; any other byte is a box.
    void Write(std::string_view text, int32_t x, int32_t y, int32_t scale, uint8_t level);

    static int32_t TextWidth(std::string_view text, int32_t scale);

private:
    int32_t width_;
    int32_t height_;
    std::vector<uint8_t> levels_;
};

// A picture made smaller: each pixel is the mean, rounded to nearest, of the pixels that it covers; those
// that it covers in part count whole, once on each side. A size that is not smaller than the picture's is the
// nearest pixel's.
Canvas Shrink(const Canvas& picture, int32_t width, int32_t height);

}  // namespace vastrelline
