// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "pictures/GridSheet.h"

namespace vastrelline {
namespace {

CaptionedPicture Flat(int32_t width, int32_t height, uint8_t level, bool isMarked = false) {
    return {"", "1 % changed", Canvas(width, height, level), isMarked};
}

std::ptrdiff_t CountLevel(const Canvas& canvas, uint8_t level) {
    return std::count(canvas.Levels().begin(), canvas.Levels().end(), level);
}

// Where the first pixel of a level lies, from the left.
int32_t ColumnOf(const Canvas& canvas, uint8_t level) {
    for (int32_t x = 0; x < canvas.Width(); ++x)
        for (int32_t y = 0; y < canvas.Height(); ++y)
            if (canvas.LevelAt(x, y) == level) return x;
    return -1;
}

TEST(GridSheet, ShowsEveryPictureWholeInItsRowAndColumn) {
    const Canvas sheet = DrawGridSheet("title", {{"1", "2"}, {"a", "b"}},
                                       {Flat(10, 20, 200), Flat(30, 5, 100), Flat(7, 7, 90), Flat(9, 9, 80)});
    EXPECT_EQ(CountLevel(sheet, 200), 10 * 20);
    EXPECT_EQ(CountLevel(sheet, 100), 30 * 5);
    EXPECT_EQ(CountLevel(sheet, 90), 7 * 7);
    EXPECT_EQ(CountLevel(sheet, 80), 9 * 9);
    EXPECT_EQ(ColumnOf(sheet, 200), ColumnOf(sheet, 90));
    EXPECT_EQ(ColumnOf(sheet, 100), ColumnOf(sheet, 80));
    EXPECT_LT(ColumnOf(sheet, 200), ColumnOf(sheet, 100));
}

TEST(GridSheet, MarksAPictureByALineAroundIt) {
    const GridLabels labels{{"1"}, {"a"}};
    const Canvas plain = DrawGridSheet("", labels, {Flat(20, 30, 200)});
    const Canvas marked = DrawGridSheet("", labels, {Flat(20, 30, 200, true)});
    EXPECT_EQ(CountLevel(marked, 200), 20 * 30);
    // Four pixels on each side, in the level of the labels.
    EXPECT_EQ(CountLevel(marked, kInkLevel) - CountLevel(plain, kInkLevel), 28 * 38 - 20 * 30);
}

TEST(GridSheet, MakesPicturesSmallerWhereColumnsAreMany) {
    const std::vector<std::string> across(100, "1");
    const std::vector<CaptionedPicture> pictures(100, Flat(260, 260, 200));
    const Canvas sheet = DrawGridSheet("", {across, {"a"}}, pictures);
    EXPECT_LT(sheet.Width(), 10000);
    EXPECT_EQ(CountLevel(sheet, 200), 100 * 65 * 65) << "8192 / 100 less the gap of 16";
}

TEST(GridSheet, HasRoomForLongLabels) {
    const std::string longWord(60, 'm');
    const Canvas shortOne = DrawGridSheet("", {{"1"}, {"a"}}, {Flat(300, 20, 200)});
    const Canvas wide = DrawGridSheet("", {{"1"}, {longWord}}, {Flat(300, 20, 200)});
    const Canvas tall = DrawGridSheet("", {{longWord}, {"a"}}, {Flat(300, 20, 200)});
    EXPECT_EQ(wide.Width() - shortOne.Width(), 200 - Canvas::TextWidth("a", kCaptionScale));
    EXPECT_GT(wide.Height(), shortOne.Height());
    EXPECT_GT(tall.Height(), shortOne.Height());
    EXPECT_EQ(tall.Width(), shortOne.Width());
}

}  // namespace
}  // namespace vastrelline
