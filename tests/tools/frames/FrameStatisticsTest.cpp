// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "frames/FrameStatistics.h"

namespace vastrelline {
namespace {

TEST(FrameStatistics, OfFourPixels) {
    const FrameStatistics statistics = MeasureFrame({2, 2, {0, 8, 8, 2056}});
    EXPECT_EQ(statistics.least, 0);
    EXPECT_EQ(statistics.greatest, 2056);
    EXPECT_EQ(statistics.mean, 518.0);
    EXPECT_EQ(statistics.percentiles, (std::array<uint16_t, 7>{0, 0, 0, 8, 8, 2056, 2056}));
    EXPECT_EQ(statistics.atZero, 1U);
    EXPECT_EQ(statistics.atGreatest, 1U);
    EXPECT_EQ(statistics.levels, 3U);
    EXPECT_EQ(statistics.bitsUsed, 12);
    EXPECT_EQ(statistics.emptyBits, 3);
}

TEST(FrameStatistics, OfOneLevel) {
    const FrameStatistics dark = MeasureFrame({3, 1, {0, 0, 0}});
    EXPECT_EQ(dark.greatest, 0);
    EXPECT_EQ(dark.bitsUsed, 0);
    EXPECT_EQ(dark.emptyBits, 0);
    EXPECT_EQ(dark.atZero, 3U);
    EXPECT_EQ(dark.levels, 1U);
    const FrameStatistics white = MeasureFrame({1, 1, {65535}});
    EXPECT_EQ(white.least, 65535);
    EXPECT_EQ(white.mean, 65535.0);
    EXPECT_EQ(white.percentiles.front(), 65535);
    EXPECT_EQ(white.bitsUsed, 16);
    EXPECT_EQ(white.emptyBits, 0);
    EXPECT_EQ(white.atZero, 0U);
}

TEST(FrameStatistics, PercentilesOfAHundredLevels) {
    Frame frame{10, 10, {}};
    for (uint16_t level = 100; level >= 1; --level) frame.pixels.push_back(level);
    EXPECT_EQ(MeasureFrame(frame).percentiles, (std::array<uint16_t, 7>{1, 5, 25, 50, 75, 95, 99}));
}

}  // namespace
}  // namespace vastrelline
