// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "phantom/LinesPhantom.h"

namespace vastrelline {
namespace {

// A quarter of a cycle per pixel, in the middles of the pixels: sin(45 degrees) and so on, times what a pixel
// leaves of the wave, sin(pi / 4) / (pi / 4): 0.5 / (pi / 4) = 0.63662 of the amplitude of 100.
TEST(LinesPhantom, IsASineOfTheMeanOverEachPixel) {
    const LinesPhantom phantom{{4, 8}, {100.0, 300.0, 4095, 1}, 0.0, 0.0, {0.25}};
    const Frame frame = MakeLinesPhantom(phantom);
    const std::vector<uint16_t> plain(frame.pixels.begin(), frame.pixels.begin() + 4);
    const std::vector<uint16_t> lines(frame.pixels.begin() + 4, frame.pixels.begin() + 8);
    EXPECT_THAT(plain, testing::ElementsAre(200, 200, 200, 200));
    EXPECT_THAT(lines, testing::ElementsAre(264, 264, 136, 136));
    EXPECT_EQ(frame.pixels.size(), 32U);
}

TEST(LinesPhantom, GroupsHavePlainRowsAroundThem) {
    const LinesPhantom phantom{{10, 33}, {100.0, 300.0, 4095, 1}, 0.0, 0.0, {0.1, 0.2}};
    const std::vector<LineGroup> groups = LineGroupsOf(phantom);
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0].top, 2);  // of 16 rows, an eighth free on both sides
    EXPECT_EQ(groups[0].height, 12);
    EXPECT_EQ(groups[1].top, 18);  // of 17 rows
    EXPECT_EQ(groups[1].height, 13);
    const Frame frame = MakeLinesPhantom(phantom);
    for (const int32_t y : {0, 1, 14, 15, 16, 17, 31, 32})
        for (int32_t x = 0; x < 10; ++x) EXPECT_EQ(frame.pixels[static_cast<size_t>(10 * y + x)], 200) << y;
    EXPECT_NE(frame.pixels[20], 200);
    EXPECT_NE(frame.pixels[180], 200);
}

// 0.2 cycles per pixel behind a blur of 0.5 pixels: exp(-2 pi^2 * 0.5^2 * 0.2^2) = 0.820869, and of the pixel
// sin(0.2 pi) / (0.2 pi) = 0.935489.
TEST(LinesPhantom, ModulationIsAmplitudeByMean) {
    const LinesPhantom phantom{{10, 20}, {100.0, 300.0, 4095, 1}, 0.0, 0.5, {0.2}};
    const LineGroup group = LineGroupsOf(phantom).front();
    EXPECT_NEAR(group.amplitude, 100.0 * 0.820869 * 0.935489, 1e-3);
    EXPECT_DOUBLE_EQ(group.modulation, group.amplitude / 200.0);
}

}  // namespace
}  // namespace vastrelline
