// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "views/SmallPicture.h"

namespace vastrelline {
namespace {

TEST(SmallPicture, OfASmallFrameHasEachPixel) {
    const SmallPicture picture = MakeSmallPicture({3, 1, {0, 51, 300}}, 255);
    EXPECT_EQ(picture.width, 3);
    EXPECT_EQ(picture.height, 1);
    EXPECT_EQ(picture.grey, (std::vector<uint8_t>{0, 51, 255}));
}

TEST(SmallPicture, FitsIntoItsSquare) {
    Frame frame{192, 4, std::vector<uint16_t>(192 * 4, 100)};
    for (size_t i = 0; i < frame.pixels.size(); i += 2) frame.pixels[i] = 200;
    const SmallPicture picture = MakeSmallPicture(frame, 255);
    EXPECT_EQ(picture.width, 96);
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(picture.grey, std::vector<uint8_t>(192, 150));
    const SmallPicture line = MakeSmallPicture({1, 1000, std::vector<uint16_t>(1000, 255)}, 255);
    EXPECT_EQ(line.width, 1);
    EXPECT_EQ(line.height, 96);
}

}  // namespace
}  // namespace vastrelline
