// SPDX-License-Identifier: Apache-2.0
#include "pictures/GridSheet.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace vastrelline {
namespace {

constexpr int32_t kMargin = 16;
constexpr int32_t kGap = 16;
constexpr int32_t kWordsGap = 8;  // between a picture and its words
constexpr PictureSize kMostCell{260, 340};
constexpr int32_t kLeastCellWidth = 48;   // of very many columns
constexpr int32_t kWordsWidth = 120;      // room for the words of small pictures
constexpr int32_t kUsualWidth = 8192;     // of a sheet, as long as cells are not at their least
constexpr int32_t kMostLabelWidth = 200;  // of the rows; longer ones go on in the next line

struct Lines {
    std::vector<std::string> lines;

    int32_t Height() const { return static_cast<int32_t>(lines.size()) * kCaptionLineHeight; }

    void Write(Canvas& canvas, int32_t x, int32_t y) const {
        for (const std::string& line : lines) {
            canvas.Write(line, x, y, kCaptionScale, kInkLevel);
            y += kCaptionLineHeight;
        }
    }
};

int32_t MostCellWidth(size_t columns) {
    const int32_t share = kUsualWidth / static_cast<int32_t>(columns) - kGap;
    return std::clamp(share, kLeastCellWidth, kMostCell.width);
}

class Grid {
public:
    Grid(const std::string& title, const GridLabels& labels, const std::vector<CaptionedPicture>& pictures)
        : pictures_(pictures), columns_(labels.across.size()) {
        const int32_t mostWidth = MostCellWidth(columns_);
        cellWidth_ = std::min(kWordsWidth, mostWidth);
        for (const CaptionedPicture& each : pictures) {
            sizes_.push_back(FitInto(each.picture, {mostWidth, kMostCell.height}));
            cellWidth_ = std::max(cellWidth_, sizes_.back().width);
        }
        for (const std::string& label : labels.down) {
            const int32_t width = Canvas::TextWidth(label, kCaptionScale);
            labelWidth_ = std::max(labelWidth_, std::min(width, kMostLabelWidth));
        }
        for (const std::string& label : labels.down) down_.push_back({WrapCaption(label, labelWidth_)});
        for (const std::string& label : labels.across) {
            across_.push_back({WrapCaption(label, cellWidth_)});
            acrossHeight_ = std::max(acrossHeight_, across_.back().Height());
        }
        title_ = {WrapCaption(title, InnerWidth())};
    }

    Canvas Draw() const {
        int32_t height = 2 * kMargin + title_.Height() + kGap + acrossHeight_ + kWordsGap;
        for (size_t row = 0; row < down_.size(); ++row) height += RowHeight(row);
        Canvas canvas(InnerWidth() + 2 * kMargin, height, kGroundLevel);
        title_.Write(canvas, kMargin, kMargin);
        int32_t y = kMargin + title_.Height() + kGap;
        for (size_t column = 0; column < columns_; ++column) across_[column].Write(canvas, XOf(column), y);
        y += acrossHeight_ + kWordsGap;
        for (size_t row = 0; row < down_.size(); ++row) {
            down_[row].Write(canvas, kMargin, y);
            DrawRow(canvas, row, y);
            y += RowHeight(row);
        }
        return canvas;
    }

private:
    int32_t XOf(size_t column) const {
        return kMargin + labelWidth_ + kGap + static_cast<int32_t>(column) * (cellWidth_ + kGap);
    }

    int32_t InnerWidth() const { return XOf(columns_) - kGap - kMargin; }

    int32_t PicturesHeight(size_t row) const {
        int32_t height = 0;
        for (size_t i = row * columns_; i < (row + 1) * columns_; ++i)
            height = std::max(height, sizes_[i].height);
        return height;
    }

    int32_t RowHeight(size_t row) const {
        int32_t words = 0;
        for (size_t i = row * columns_; i < (row + 1) * columns_; ++i)
            words = std::max(words, CaptionHeight(pictures_[i], cellWidth_));
        return std::max(PicturesHeight(row) + kWordsGap + words, down_[row].Height()) + kGap;
    }

    void DrawRow(Canvas& canvas, size_t row, int32_t y) const {
        const int32_t wordsY = y + PicturesHeight(row) + kWordsGap;
        for (size_t column = 0; column < columns_; ++column) {
            const size_t i = row * columns_ + column;
            PasteSmall(canvas, pictures_[i], sizes_[i], XOf(column), y);
            WriteCaption(canvas, pictures_[i], XOf(column), wordsY, cellWidth_);
        }
    }

    const std::vector<CaptionedPicture>& pictures_;
    size_t columns_;
    int32_t cellWidth_ = 0;
    int32_t labelWidth_ = 0;
    int32_t acrossHeight_ = 0;
    std::vector<PictureSize> sizes_;
    std::vector<Lines> across_;
    std::vector<Lines> down_;
    Lines title_;
};

}  // namespace

Canvas DrawGridSheet(const std::string& title, const GridLabels& labels,
                     const std::vector<CaptionedPicture>& pictures) {
    return Grid(title, labels, pictures).Draw();
}

}  // namespace vastrelline
