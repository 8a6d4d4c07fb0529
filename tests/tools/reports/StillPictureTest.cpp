// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats/PngFormat.h"
#include "reports/Base64.h"
#include "reports/StillPicture.h"

namespace vastrelline {
namespace {

std::string SourceOf(const std::vector<uint8_t>& levels, int32_t width, int32_t height) {
    return "data:image/png;base64," + EncodeBase64(EncodePng8(levels, width, height));
}

TEST(DrawStill, ShowsAFrameThatFitsAsItIs) {
    const StillPicture picture = DrawStill({3, 2, {0, 10, 20, 30, 40, 99}}, {10, 30}, 10);
    EXPECT_EQ(picture.width, 3);
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(picture.source, SourceOf({0, 0, 128, 255, 255, 255}, 3, 2));
}

TEST(DrawStill, MakesALargeFrameSmaller) {
    const StillPicture picture = DrawStill({4, 2, std::vector<uint16_t>(8, 255)}, {0, 255}, 2);
    EXPECT_EQ(picture.width, 2);
    EXPECT_EQ(picture.height, 1);
    EXPECT_EQ(picture.source, SourceOf({255, 255}, 2, 1));
}

// A mean would leave 255 / 6 of the one pixel.
TEST(DrawStillDifference, LosesNoPixel) {
    Frame differences{5, 3, std::vector<uint16_t>(15, 0)};
    differences.pixels[1 * 5 + 4] = 7;
    const StillPicture picture = DrawStillDifference(differences, 7, 3);
    EXPECT_EQ(picture.width, 3);
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(picture.source, SourceOf({0, 0, 255, 0, 0, 0}, 3, 2));
}

}  // namespace
}  // namespace vastrelline
