// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "views/ReducedFrame.h"

namespace vastrelline {
namespace {

TEST(ReducedFrame, StaysWholeWhereItFits) {
    const Frame frame{3, 2, {0, 1, 2, 3, 4, 5}};
    const ReducedFrame reduced = ReduceFrame(frame, 6);
    EXPECT_EQ(reduced.step, 1);
    EXPECT_EQ(reduced.frame.pixels, frame.pixels);
}

TEST(ReducedFrame, HasMeansOfBlocksThatMayBeCutAtTheEdge) {
    // 2 x 2 blocks: {1, 2, 4, 5} has the mean 3, {3, 6} has 4.5, {7, 8} has 7.5, and 9 stands alone.
    const ReducedFrame reduced = ReduceFrame({3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9}}, 8);
    EXPECT_EQ(reduced.step, 2);
    EXPECT_EQ(reduced.width, 3);
    EXPECT_EQ(reduced.height, 3);
    EXPECT_EQ(reduced.frame.width, 2);
    EXPECT_EQ(reduced.frame.height, 2);
    EXPECT_EQ(reduced.frame.pixels, (std::vector<uint16_t>{3, 5, 8, 9}));
}

TEST(ReducedFrame, IsOnePixelAtLeast) {
    const ReducedFrame reduced = ReduceFrame({2, 1, {65535, 65535}}, 0);
    EXPECT_EQ(reduced.step, 2);
    EXPECT_EQ(reduced.frame.pixels, (std::vector<uint16_t>{65535}));
}

TEST(ReducedFrame, IsAskedInPixelsOfTheWholeFrame) {
    const ReducedFrame reduced = ReduceFrame({4, 2, {0, 0, 100, 100, 0, 0, 100, 100}}, 2);
    ASSERT_EQ(reduced.step, 2);
    EXPECT_EQ(RenderReduced(reduced, {0, 0, 4, 2, 2, 1}, {0, 100}), (std::vector<uint8_t>{0, 255}));
    EXPECT_EQ(RenderReduced(reduced, {2, 0, 4, 2, 2, 1}, {0, 100}), (std::vector<uint8_t>{255, 128}));
}

}  // namespace
}  // namespace vastrelline
