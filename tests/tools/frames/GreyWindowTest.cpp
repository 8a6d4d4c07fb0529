// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "frames/GreyWindow.h"

namespace vastrelline {
namespace {

TEST(GreyWindow, IsTwoLevelsWithAColon) {
    EXPECT_EQ(ParseGreyWindow("0:4095"), (GreyWindow{0, 4095}));
    EXPECT_EQ(ParseGreyWindow("65534:65535"), (GreyWindow{65534, 65535}));
}

TEST(GreyWindow, OtherTextsAreNone) {
    for (const std::string text :
         {"", ":", "1", "1:", ":1", "5:5", "6:5", "-1:5", "0:65536", "0:1:2", "a:b", "0: 5"})
        EXPECT_EQ(ParseGreyWindow(text), std::nullopt) << text;
}

TEST(GreyWindow, LowIsBlackAndHighIsWhite) {
    const Frame frame{6, 1, {0, 99, 100, 200, 300, 65535}};
    // 100 / 200 * 255 = 127.5 in the middle, rounded up.
    EXPECT_EQ(RenderThroughWindow(frame, {100, 300}), (std::vector<uint8_t>{0, 0, 0, 128, 255, 255}));
}

TEST(GreyWindow, RoundsToNearest) {
    // One level of 4096 is 255 / 4095 = 0.0623: 8 levels are 0.498, 9 are 0.560.
    const Frame frame{4, 1, {8, 9, 4086, 4087}};
    EXPECT_EQ(RenderThroughWindow(frame, {0, 4095}), (std::vector<uint8_t>{0, 1, 254, 255}));
}

TEST(GreyWindow, WidestAndNarrowest) {
    const Frame frame{3, 1, {0, 32768, 65535}};
    EXPECT_EQ(RenderThroughWindow(frame, {0, 65535}), (std::vector<uint8_t>{0, 128, 255}));
    EXPECT_EQ(RenderThroughWindow(frame, {32767, 32768}), (std::vector<uint8_t>{0, 255, 255}));
}

}  // namespace
}  // namespace vastrelline
