// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "pictures/StripPicture.h"

namespace vastrelline {
namespace {

CaptionedPicture Flat(const std::string& title, int32_t width, int32_t height, uint8_t level) {
    return {title, "1 ms", Canvas(width, height, level)};
}

int64_t CountOf(const Canvas& canvas, uint8_t level) {
    return std::count(canvas.Levels().begin(), canvas.Levels().end(), level);
}

TEST(StripPicture, ShowsEveryPictureInItsSize) {
    const Canvas strip =
        DrawStrip(Flat("before", 650, 834, 10), Flat("after", 650, 834, 20),
                  {Flat("a", 650, 834, 30), Flat("b", 650, 834, 31), Flat("c", 650, 834, 32)});
    // 650 / 834 * 640 = 498.8 and 834 / 650 * 180 = 230.95
    EXPECT_EQ(CountOf(strip, 10), 499 * 640);
    EXPECT_EQ(CountOf(strip, 20), 499 * 640);
    for (const int level : {30, 31, 32}) EXPECT_EQ(CountOf(strip, static_cast<uint8_t>(level)), 180 * 231);
    EXPECT_EQ(strip.Width(), 2 * 499 + 12 + 2 * 16);
}

TEST(StripPicture, NeverEnlarges) {
    const Canvas strip = DrawStrip(Flat("b", 3, 5, 10), Flat("a", 3, 5, 20), {Flat("s", 3, 5, 30)});
    EXPECT_EQ(CountOf(strip, 10), 15);
    EXPECT_EQ(CountOf(strip, 30), 15);
}

TEST(StripPicture, FillsItsRowsEvenly) {
    std::vector<CaptionedPicture> steps;
    for (int i = 0; i < 9; ++i) steps.push_back(Flat("s", 400, 400, static_cast<uint8_t>(100 + i)));
    const Canvas strip = DrawStrip(Flat("b", 400, 400, 10), Flat("a", 400, 400, 20), steps);
    // Five in the first row: 5 * 180 + 4 * 12, and the margins.
    EXPECT_EQ(strip.Width(), 5 * 180 + 4 * 12 + 2 * 16);
    for (int i = 0; i < 9; ++i) EXPECT_EQ(CountOf(strip, static_cast<uint8_t>(100 + i)), 180 * 180);
}

TEST(StripPicture, DoesWithoutSteps) {
    const Canvas strip = DrawStrip(Flat("b", 8, 8, 10), Flat("a", 8, 8, 20), {});
    EXPECT_EQ(CountOf(strip, 20), 64);
}

}  // namespace
}  // namespace vastrelline
