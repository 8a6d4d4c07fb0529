// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>

#include "phantom/EdgePhantom.h"

namespace vastrelline {
namespace {

TEST(EdgePhantom, AnUprightSharpEdgeIsTwoLevels) {
    const Frame frame = MakeEdgePhantom({{4, 2}, {10.0, 90.0, 255, 1}, 0.0, 0.0, 0.0});
    EXPECT_THAT(frame.pixels, testing::ElementsAre(10, 10, 90, 90, 10, 10, 90, 90));
}

TEST(EdgePhantom, AnEdgeThroughAPixelIsItsArea) {
    const Frame frame = MakeEdgePhantom({{3, 1}, {10.0, 90.0, 255, 1}, 0.0, 0.0, 0.0});
    EXPECT_THAT(frame.pixels, testing::ElementsAre(10, 50, 90));
}

// An edge at 45 degrees goes through the corners: each pixel on it is half bright.
TEST(EdgePhantom, AboveZeroItRunsToTheRightOnItsWayDown) {
    const EdgePhantom phantom{{3, 3}, {10.0, 90.0, 255, 1}, 0.0, 45.0, 0.0};
    EXPECT_THAT(MakeEdgePhantom(phantom).pixels, testing::ElementsAre(50, 90, 90, 10, 50, 90, 10, 10, 50));
    EdgePhantom other = phantom;
    other.angleDegrees = -45.0;
    EXPECT_THAT(MakeEdgePhantom(other).pixels, testing::ElementsAre(10, 10, 50, 10, 50, 90, 50, 90, 90));
}

// The bright pixels of a row, parts included, reach to the edge; it moves by the tangent from row to row.
TEST(EdgePhantom, TheEdgeMovesByItsTangent) {
    const EdgePhantom phantom{{200, 100}, {1000.0, 61000.0, 65535, 1}, 0.0, 7.0, 1.5};
    const Frame frame = MakeEdgePhantom(phantom);
    const auto edgeOf = [&frame](int32_t y) {
        double bright = 0.0;
        for (int32_t x = 0; x < frame.width; ++x)
            bright += (frame.pixels[PixelCount(frame.width, y) + static_cast<size_t>(x)] - 1000.0) / 60000.0;
        return frame.width - bright;
    };
    const double slope = std::tan(7.0 * std::acos(-1.0) / 180.0);
    for (const int32_t y : {0, 31, 99})
        EXPECT_NEAR(edgeOf(y), 100.0 + (y + 0.5 - 50.0) * slope, 1e-3) << y;  // 200 roundings of half a level
}

TEST(EdgePhantom, SeedsGiveOtherNoise) {
    EdgePhantom phantom{{40, 40}, {500.0, 3000.0, 4095, 5}, 9.0, 5.0, 0.7};
    const Frame first = MakeEdgePhantom(phantom);
    EXPECT_EQ(first.pixels, MakeEdgePhantom(phantom).pixels);
    phantom.levels.seed = 6;
    EXPECT_NE(first.pixels, MakeEdgePhantom(phantom).pixels);
}

}  // namespace
}  // namespace vastrelline
