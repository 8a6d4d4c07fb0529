// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

std::string Explanation(const Frame& actual, const Frame& expected) {
    std::ostringstream text;
    EXPECT_FALSE(EqualsFrame(expected).MatchAndExplain(actual, &text));
    return text.str();
}

TEST(FrameMatcher, MatchesAFrameOfTheSamePixels) {
    EXPECT_THAT(FromRows({{1, 2}, {3, 4}}), EqualsFrame(Ramp(2, 2, 1, 1, 2)));
}

TEST(FrameMatcher, NamesEachUnequalPixelByColumnAndRow) {
    EXPECT_EQ(Explanation(FromRows({{1, 2}, {3, 9}}), FromRows({{1, 7}, {3, 4}})),
              "with (1, 0) expected 7, actual 2; (1, 1) expected 4, actual 9; unequal pixels: 2 of 4");
}

TEST(FrameMatcher, ShowsOnlyTheFirstOfManyUnequalPixels) {
    const std::string text = Explanation(Flat(4, 5, 1), Flat(4, 5, 2));
    EXPECT_NE(text.find("(3, 1)"), std::string::npos);  // the eighth
    EXPECT_EQ(text.find("(0, 2)"), std::string::npos);  // the ninth
    EXPECT_NE(text.find("unequal pixels: 20 of 20"), std::string::npos);
}

TEST(FrameMatcher, TellsFramesOfUnequalSizeApart) {
    EXPECT_EQ(Explanation(Flat(2, 3, 0), Flat(3, 2, 0)), "whose size is 2 x 3");
}

TEST(Frames, ImpulseIsOnePixelOnItsBackground) {
    EXPECT_EQ(Impulse(3, 2, 2, 1, 9, 4).pixels, (std::vector<uint16_t>{4, 4, 4, 4, 4, 9}));
}

TEST(Frames, MirrorsTurnColumnsAndRowsOver) {
    EXPECT_EQ(MirrorLeftRight(FromRows({{1, 2, 3}, {4, 5, 6}})), FromRows({{3, 2, 1}, {6, 5, 4}}));
    EXPECT_EQ(MirrorTopBottom(FromRows({{1, 2, 3}, {4, 5, 6}})), FromRows({{4, 5, 6}, {1, 2, 3}}));
}

TEST(Frames, NoiseStaysInItsRangeAndFollowsItsSeed) {
    const Frame noise = Noise(40, 30, 3, 1);
    for (const uint16_t pixel : noise.pixels) ASSERT_LE(pixel, 3);
    EXPECT_EQ(noise, Noise(40, 30, 3, 1));
    EXPECT_FALSE(noise == Noise(40, 30, 3, 2));
}

TEST(Frames, PixelsThatDoNotFitTheSizeAreRefused) {
    EXPECT_THROW(Frame(2, 2, {1, 2, 3}), std::invalid_argument);
    EXPECT_THROW(FromRows({{1, 2}, {3}}), std::invalid_argument);
}

}  // namespace
}  // namespace vastrelline
