// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "pictures/ContactSheet.h"

namespace vastrelline {
namespace {

CaptionedPicture Flat(const std::string& title, int32_t width, int32_t height, uint8_t level) {
    return {title, "", Canvas(width, height, level)};
}

std::ptrdiff_t CountLevel(const Canvas& canvas, uint8_t level) {
    return std::count(canvas.Levels().begin(), canvas.Levels().end(), level);
}

TEST(ContactSheet, ShowsEveryPictureWhole) {
    const Canvas sheet =
        DrawContactSheet("title", {Flat("a", 10, 20, 200), Flat("b", 30, 5, 100), Flat("c", 7, 7, 90)}, 2);
    EXPECT_EQ(CountLevel(sheet, 200), 10 * 20);
    EXPECT_EQ(CountLevel(sheet, 100), 30 * 5);
    EXPECT_EQ(CountLevel(sheet, 90), 7 * 7);
}

TEST(ContactSheet, MakesLargePicturesSmaller) {
    const Canvas sheet = DrawContactSheet("", {Flat("a", 520, 340, 200)}, 0);
    EXPECT_EQ(CountLevel(sheet, 200), 260 * 170);
}

TEST(ContactSheet, GrowsWithItsWords) {
    const Canvas small = DrawContactSheet("", {Flat("a", 10, 20, 200)}, 0);
    const Canvas large = DrawContactSheet("", {Flat("a\nb\nc", 10, 20, 200)}, 0);
    EXPECT_EQ(large.Width(), small.Width());
    EXPECT_EQ(large.Height(), small.Height() + 2 * 20);
}

TEST(ContactSheet, PutsAsManyInARowAsAreAskedFor) {
    const std::vector<CaptionedPicture> pictures(4, Flat("a", 10, 20, 200));
    const Canvas two = DrawContactSheet("", pictures, 2);
    const Canvas four = DrawContactSheet("", pictures, 4);
    EXPECT_EQ(four.Width() - two.Width(), 2 * (160 + 16));
    EXPECT_LT(four.Height(), two.Height());
}

TEST(ContactSheet, MakesRowsOfOneLength) {
    const std::vector<CaptionedPicture> eight(8, Flat("a", 10, 20, 200));
    EXPECT_EQ(DrawContactSheet("", eight, 0).Levels(), DrawContactSheet("", eight, 4).Levels());
}

}  // namespace
}  // namespace vastrelline
