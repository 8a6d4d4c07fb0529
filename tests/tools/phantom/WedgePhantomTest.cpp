// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>

#include "phantom/WedgePhantom.h"

namespace vastrelline {
namespace {

TEST(WedgePhantom, StepsAreStripesOfEqualDifferences) {
    const WedgePhantom phantom{{6, 2}, {10.0, 20.0, 255, 1}, {0.0, 0.0, 0.0}};
    const Frame frame = MakeWedgePhantom(phantom);
    EXPECT_EQ(frame.width, 6);
    EXPECT_EQ(frame.height, 2);
    EXPECT_THAT(frame.pixels, testing::ElementsAre(10, 10, 15, 15, 20, 20, 10, 10, 15, 15, 20, 20));
}

TEST(WedgePhantom, LevelsAndWidthsAreWhole) {
    const WedgePhantom phantom{{8, 1}, {0.0, 5.0, 255, 1}, {0.0, 0.0, 0.0}};
    const std::vector<WedgeStep> steps = WedgeStepsOf(phantom);
    ASSERT_EQ(steps.size(), 3U);
    EXPECT_EQ(steps[0].width + steps[1].width + steps[2].width, 8);
    EXPECT_EQ(steps[1].left, 2);
    EXPECT_EQ(steps[2].left, 5);
    EXPECT_EQ(steps[1].level, 3.0);  // 2.5, rounded half up
    EXPECT_THAT(MakeWedgePhantom(phantom).pixels, testing::ElementsAre(0, 0, 3, 3, 3, 5, 5, 5));
}

TEST(WedgePhantom, OneStepIsAFlatFrame) {
    EXPECT_THAT(MakeWedgePhantom({{2, 1}, {7.0, 9.0, 255, 1}, {0.0}}).pixels, testing::ElementsAre(7, 7));
}

// n pixels of a step tell its deviation to 1 / sqrt(2 n): five of these are allowed.
TEST(WedgePhantom, EachStepHasItsOwnNoise) {
    const WedgePhantom phantom{{200, 400}, {500.0, 3000.0, 4095, 5}, {2.0, 20.0}};
    const Frame frame = MakeWedgePhantom(phantom);
    for (const WedgeStep& step : WedgeStepsOf(phantom)) {
        double squares = 0.0;
        for (int32_t y = 0; y < frame.height; ++y)
            for (int32_t x = step.left; x < step.left + step.width; ++x) {
                const double off =
                    frame.pixels[PixelCount(frame.width, y) + static_cast<size_t>(x)] - step.level;
                squares += off * off;
            }
        const double expected = std::sqrt(step.noise * step.noise + 1.0 / 12.0);
        const double pixels = 100.0 * 400.0;
        EXPECT_NEAR(std::sqrt(squares / pixels), expected, 5.0 * expected / std::sqrt(2.0 * pixels));
    }
}

TEST(WedgePhantom, SeedsGiveOtherNoise) {
    WedgePhantom phantom{{20, 20}, {500.0, 3000.0, 4095, 5}, {9.0, 9.0}};
    const Frame first = MakeWedgePhantom(phantom);
    EXPECT_EQ(first.pixels, MakeWedgePhantom(phantom).pixels);
    phantom.levels.seed = 6;
    EXPECT_NE(first.pixels, MakeWedgePhantom(phantom).pixels);
}

}  // namespace
}  // namespace vastrelline
