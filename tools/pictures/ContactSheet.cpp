// SPDX-License-Identifier: Apache-2.0
#include "pictures/ContactSheet.h"

#include <algorithm>
#include <cstdint>

namespace vastrelline {
namespace {

constexpr int32_t kMargin = 16;
constexpr int32_t kGap = 16;
constexpr int32_t kWordsGap = 8;  // between a picture and its words
constexpr PictureSize kMostCell{260, 340};
constexpr int32_t kLeastCellWidth = 160;  // room for the words of small pictures
constexpr size_t kMostInRow = 6;

// Rows of one length, as far as that goes: no single picture is left over for the last one.
size_t ChooseRowLength(size_t count) {
    const size_t rows = (count + kMostInRow - 1) / kMostInRow;
    return (count + rows - 1) / rows;
}

struct Row {
    size_t begin;
    size_t end;
    int32_t pictureHeight = 0;
    int32_t wordsHeight = 0;

    int32_t Height() const { return pictureHeight + kWordsGap + wordsHeight + kGap; }
};

}  // namespace

Canvas ShrinkForSheet(const Canvas& picture) {
    const PictureSize size = FitInto(picture, kMostCell);
    return Shrink(picture, size.width, size.height);
}

Canvas DrawContactSheet(const std::string& title, const std::vector<CaptionedPicture>& pictures,
                        size_t inRow) {
    if (inRow == 0) inRow = ChooseRowLength(pictures.size());
    std::vector<PictureSize> sizes;
    int32_t cellWidth = kLeastCellWidth;
    for (const CaptionedPicture& each : pictures) {
        sizes.push_back(FitInto(each.picture, kMostCell));
        cellWidth = std::max(cellWidth, sizes.back().width);
    }
    std::vector<Row> rows;
    for (size_t i = 0; i < pictures.size(); ++i) {
        if (i % inRow == 0) rows.push_back({i, std::min(i + inRow, pictures.size())});
        rows.back().pictureHeight = std::max(rows.back().pictureHeight, sizes[i].height);
        rows.back().wordsHeight = std::max(rows.back().wordsHeight, CaptionHeight(pictures[i], cellWidth));
    }
    const auto columns = static_cast<int32_t>(std::min(inRow, pictures.size()));
    const int32_t innerWidth = columns * cellWidth + (columns - 1) * kGap;
    const std::vector<std::string> titleLines = WrapCaption(title, innerWidth);
    int32_t y = kMargin + static_cast<int32_t>(titleLines.size()) * kCaptionLineHeight + kGap;
    int32_t height = y + kMargin - kGap;
    for (const Row& row : rows) height += row.Height();

    Canvas canvas(innerWidth + 2 * kMargin, height, kGroundLevel);
    WriteCaption(canvas, {title, "", Canvas(1, 1, kGroundLevel)}, kMargin, kMargin, innerWidth);
    for (const Row& row : rows) {
        int32_t x = kMargin;
        for (size_t i = row.begin; i < row.end; ++i) {
            PasteSmall(canvas, pictures[i], sizes[i], x, y);
            WriteCaption(canvas, pictures[i], x, y + row.pictureHeight + kWordsGap, cellWidth);
            x += cellWidth + kGap;
        }
        y += row.Height();
    }
    return canvas;
}

}  // namespace vastrelline
