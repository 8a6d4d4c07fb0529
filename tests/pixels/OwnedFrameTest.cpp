// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

#include "pixels/OwnedFrame.h"
#include "support/ToVector.h"

namespace vastrelline {
namespace {

TEST(OwnedFrame, ItsViewShowsItsPixelsRowByRow) {
    const OwnedFrame frame{3, 2, {1, 2, 3, 4, 5, 6}};
    EXPECT_EQ(frame.View().Width(), 3);
    EXPECT_EQ(frame.View().Height(), 2);
    EXPECT_EQ(frame.View().Row(1)[0], 4);
    EXPECT_EQ(frame.View().Row(1)[2], 6);
}

TEST(OwnedFrame, WhatIsWrittenThroughItsViewIsKept) {
    OwnedFrame frame{2, 2, {1, 2, 3, 4}};
    frame.View().Row(1)[0] = 9;
    EXPECT_EQ(ToVector(frame.pixels), (std::vector<uint16_t>{1, 2, 9, 4}));
}

TEST(OwnedFrame, TheViewOfAConstantFrameIsReadOnly) {
    using View = decltype(std::declval<const OwnedFrame&>().View());
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<View>().begin()), const uint16_t*>));
}

}  // namespace
}  // namespace vastrelline
