// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include "frames/FlatCorners.h"

namespace vastrelline {
namespace {

// 9 x 12 pixels, no two neighbours equal.
Frame Patterned() {
    Frame frame{9, 12, {}};
    for (int32_t y = 0; y < 12; ++y)
        for (int32_t x = 0; x < 9; ++x) frame.pixels.push_back(static_cast<uint16_t>(100 + 10 * y + x));
    return frame;
}

uint16_t& At(Frame& frame, int32_t x, int32_t y) {
    return frame.pixels[static_cast<size_t>(y * frame.width + x)];
}

TEST(FlatCorners, APatternHasNone) {
    for (const Corner corner : kCorners) EXPECT_EQ(FindFlatCorner(Patterned(), corner).width, 0);
}

TEST(FlatCorners, AreMeasuredAlongBothEdges) {
    for (const Corner corner : kCorners) {
        SCOPED_TRACE(CornerName(corner));
        const bool isRight = corner == Corner::TopRight || corner == Corner::BottomRight;
        const bool isBottom = corner == Corner::BottomLeft || corner == Corner::BottomRight;
        Frame frame = Patterned();
        // A triangle of three columns and four rows.
        for (int32_t y = 0; y < 4; ++y)
            for (int32_t x = 0; x < (y == 0 ? 3 : y < 3 ? 2 : 1); ++x)
                At(frame, isRight ? 8 - x : x, isBottom ? 11 - y : y) = 7;
        for (const Corner other : kCorners) {
            const FlatCorner found = FindFlatCorner(frame, other);
            EXPECT_EQ(found.width, other == corner ? 3 : 0);
            EXPECT_EQ(found.height, other == corner ? 4 : 0);
            EXPECT_EQ(found.level, other == corner ? 7 : 0);
        }
    }
}

TEST(FlatCorners, ADarkSideIsNone) {
    Frame frame = Patterned();
    for (int32_t x = 0; x < 9; ++x) At(frame, x, 0) = At(frame, x, 1) = 0;
    EXPECT_EQ(FindFlatCorner(frame, Corner::TopLeft).width, 0);
    EXPECT_EQ(FindFlatCorner(frame, Corner::TopRight).width, 0);
}

TEST(FlatCorners, AreNoneOfTinyFrames) {
    EXPECT_EQ(FindFlatCorner({0, 0, {}}, Corner::TopLeft).width, 0);
    EXPECT_EQ(FindFlatCorner({1, 1, {0}}, Corner::BottomRight).width, 0);
    EXPECT_EQ(FindFlatCorner({2, 2, {0, 0, 0, 0}}, Corner::TopLeft).width, 0);
}

}  // namespace
}  // namespace vastrelline
