// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "measure/EdgeLine.h"
#include "phantom/EdgePhantom.h"

namespace vastrelline {
namespace {

// At 45 degrees through the middle of 40 x 40 pixels: the pixel (y, y) is half bright, so the edge is at
// column y.
TEST(EdgeLine, IsWhereHalfOfThePixelIsBright) {
    const EdgeLine line = FindEdgeLine(MakeEdgePhantom({{40, 40}, {100.0, 900.0, 4095, 1}, 0.0, 45.0, 0.0}));
    EXPECT_TRUE(line.isBrightRight);
    EXPECT_NEAR(line.At(20.0), 20.0, 0.1);
    EXPECT_NEAR(line.slope, 1.0, 0.02);  // near the corners the rise is cut
}

TEST(EdgeLine, LiesWhereRowsDifferMost) {
    EXPECT_FALSE(IsLyingEdge({9, 2, std::vector<uint16_t>(18, 5)}));
    EXPECT_FALSE(IsLyingEdge(MakeEdgePhantom({{40, 40}, {100.0, 900.0, 4095, 1}, 0.0, 5.0, 0.7})));
}

}  // namespace
}  // namespace vastrelline
