// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <vector>

#include "pixels/FrameView.h"

namespace vastrelline {
namespace {

TEST(FrameView, RowsFollowEachOtherFromTheTop) {
    const std::vector<uint16_t> pixels{1, 2, 3, 4, 5, 6};
    const FrameView view(pixels.data(), 3, 2);
    EXPECT_EQ(view.Width(), 3);
    EXPECT_EQ(view.Height(), 2);
    EXPECT_EQ(view.Count(), 6U);
    EXPECT_EQ(view.Row(0)[2], 3);
    EXPECT_EQ(view.Row(1)[0], 4);  // pixel (x, y) is element y * width + x
    EXPECT_EQ(view.Row(1)[2], 6);
}

TEST(FrameView, WalksAllPixelsInMemoryOrder) {
    const std::vector<uint16_t> pixels{7, 8, 9, 10};
    const FrameView view(pixels.data(), 2, 2);
    EXPECT_EQ(std::vector<uint16_t>(view.begin(), view.end()), pixels);
}

TEST(FrameView, WritesReachTheFrameOfItsOwner) {
    std::vector<int32_t> pixels(4);
    const FrameView view(pixels.data(), 2, 2);
    view.Row(1)[0] = -5;
    EXPECT_EQ(pixels, (std::vector<int32_t>{0, 0, -5, 0}));
}

TEST(FrameView, EmptyFrameHasNoPixelsAndNeedsNoMemory) {
    uint16_t* const none = nullptr;
    for (const std::array<int32_t, 2> size : {std::array{0, 0}, std::array{0, 3}, std::array{3, 0}}) {
        const FrameView view(none, size[0], size[1]);
        EXPECT_EQ(view.Count(), 0U);
        EXPECT_EQ(view.begin(), view.end());
    }
}

TEST(FrameView, CountDoesNotWrapIn32Bits) {
    uint16_t pixel = 0;
    EXPECT_EQ(FrameView(&pixel, 0x10000, 0x10000).Count(), uint64_t{1} << 32U);
}

#ifndef NDEBUG
TEST(FrameViewDeathTest, SlipsOfTheCallerAreAsserted) {
    uint16_t pixel = 0;
    uint16_t* const none = nullptr;
    EXPECT_DEATH(FrameView(&pixel, -1, 1), "");
    EXPECT_DEATH(FrameView(&pixel, 1, -1), "");
    EXPECT_DEATH(FrameView(none, 1, 1), "");
    EXPECT_DEATH((void)FrameView(&pixel, 1, 1).Row(1), "");
    EXPECT_DEATH((void)FrameView(&pixel, 1, 1).Row(-1), "");
}
#endif

}  // namespace
}  // namespace vastrelline
