// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pictures/Canvas.h"

namespace vastrelline {

// The look of pictures that are put together of several: neutral and dark, as in a reading room.
inline constexpr uint8_t kGroundLevel = 40;
inline constexpr uint8_t kInkLevel = 225;
inline constexpr uint8_t kFaintInkLevel = 150;

inline constexpr int32_t kCaptionScale = 2;
inline constexpr int32_t kCaptionLineHeight = 20;

// A picture with words for it.
struct CaptionedPicture {
    std::string title;   // "4 CLAHE"
    std::string detail;  // "2 ms"; may be empty, or have several lines
    Canvas picture;
    bool isMarked = false;  // a bright line around it says: this one
};

struct PictureSize {
    int32_t width = 0;
    int32_t height = 0;

    bool operator==(const PictureSize&) const = default;
};

// The largest size of the same shape that fits into a box and is not larger than the picture itself.
PictureSize FitInto(const Canvas& picture, PictureSize box);

// Puts it onto a sheet at this size, with its mark around it.
void PasteSmall(Canvas& canvas, const CaptionedPicture& picture, PictureSize size, int32_t x, int32_t y);

// A text in lines of caption letters that are at most so many pixels wide. It is cut at blanks, and within a
// word only where that alone is too long. An empty text has no line.
std::vector<std::string> WrapCaption(const std::string& text, int32_t width);

// The height of a picture's words in lines of this width.
int32_t CaptionHeight(const CaptionedPicture& picture, int32_t width);

// Writes title and detail from this place on.
void WriteCaption(Canvas& canvas, const CaptionedPicture& picture, int32_t x, int32_t y, int32_t width);

}  // namespace vastrelline
