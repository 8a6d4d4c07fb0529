// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "pictures/Canvas.h"

namespace vastrelline {
namespace {

using Levels = std::vector<uint8_t>;

Canvas Of(int32_t width, int32_t height, const Levels& levels) {
    Canvas canvas(width, height, 0);
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x) canvas.SetLevel(x, y, levels[static_cast<size_t>(y * width + x)]);
    return canvas;
}

TEST(Canvas, IsFilledWithItsBackground) {
    EXPECT_EQ(Canvas(2, 2, 7).Levels(), (Levels{7, 7, 7, 7}));
    EXPECT_THROW(Canvas(0, 1, 0), std::length_error);
    EXPECT_THROW(Canvas(1, -1, 0), std::length_error);
    EXPECT_THROW(Canvas(1 << 20, 1 << 20, 0), std::length_error);
}

TEST(Canvas, CutsOffWhatLiesOutside) {
    Canvas canvas(2, 2, 0);
    canvas.Paste(Of(2, 2, {1, 2, 3, 4}), 1, 1);
    EXPECT_EQ(canvas.Levels(), (Levels{0, 0, 0, 1}));
    canvas.Paste(Of(2, 2, {1, 2, 3, 4}), -1, -1);
    EXPECT_EQ(canvas.Levels(), (Levels{4, 0, 0, 1}));
    canvas.SetLevel(2, 0, 9);
    canvas.SetLevel(0, -1, 9);
    EXPECT_EQ(canvas.Levels(), (Levels{4, 0, 0, 1}));
}

TEST(Canvas, WritesLettersOfDots) {
    Canvas canvas(11, 7, 0);
    canvas.Write("L-", 0, 0, 1, 9);
    EXPECT_EQ(canvas.LevelAt(0, 0), 9);
    EXPECT_EQ(canvas.LevelAt(4, 6), 9);
    EXPECT_EQ(canvas.LevelAt(1, 0), 0);
    EXPECT_EQ(canvas.LevelAt(6, 3), 9);
    EXPECT_EQ(canvas.LevelAt(5, 3), 0);
    EXPECT_EQ(Canvas::TextWidth("L-", 1), 11);
    EXPECT_EQ(Canvas::TextWidth("L-", 2), 22);
    EXPECT_EQ(Canvas::TextWidth("", 2), 0);
}

TEST(Shrink, GivesMeansRoundedToNearest) {
    const Canvas picture = Of(4, 2, {0, 1, 10, 20, 1, 1, 30, 41});
    // 3 / 4 = 0.75 and 101 / 4 = 25.25
    EXPECT_EQ(Shrink(picture, 2, 1).Levels(), (Levels{1, 25}));
    EXPECT_EQ(Shrink(picture, 4, 2).Levels(), picture.Levels());
}

TEST(Shrink, KeepsAFlatPictureFlatAtAnySize) {
    const Canvas picture(7, 5, 201);
    for (int32_t width = 1; width <= 9; ++width)
        for (int32_t height = 1; height <= 9; ++height)
            EXPECT_EQ(Shrink(picture, width, height).Levels(),
                      Levels(static_cast<size_t>(width * height), 201));
}

}  // namespace
}  // namespace vastrelline
