// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "frames/SignedLevels.h"

namespace vastrelline {
namespace {

TEST(FindReach, IsAtLeastOne) {
    EXPECT_EQ(FindReach(std::vector<int16_t>{}), 1);
    EXPECT_EQ(FindReach(std::vector<int16_t>{0, 0, 0}), 1);
}

TEST(FindReach, CountsBothSignsAndTheLowestLevel) {
    EXPECT_EQ(FindReach(std::vector<int16_t>{5, -7}), 7);
    EXPECT_EQ(FindReach(std::vector<int16_t>{-32768}), 32768);
}

TEST(FindReach, PassesOverOneLevelInTwoHundred) {
    std::vector<int16_t> levels(200, 3);
    levels[0] = 900;
    EXPECT_EQ(FindReach(levels), 3);
    levels[1] = -800;
    EXPECT_EQ(FindReach(levels), 800) << "two of them are more than half a per cent";
}

TEST(RenderSigned, PutsNothingIntoTheMiddle) {
    EXPECT_EQ(RenderSigned(std::vector<int16_t>{0, 127, -127, 1, -1}, 127),
              (std::vector<uint8_t>{128, 255, 1, 129, 127}));
}

TEST(RenderSigned, RoundsToNearestAndLimits) {
    // 127 / 254 is a half, 3 * 127 / 254 one and a half.
    EXPECT_EQ(RenderSigned(std::vector<int16_t>{1, -1, 3, 300, -32768}, 254),
              (std::vector<uint8_t>{129, 127, 130, 255, 1}));
}

}  // namespace
}  // namespace vastrelline
