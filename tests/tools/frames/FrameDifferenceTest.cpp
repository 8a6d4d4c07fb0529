// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frames/FrameDifference.h"

namespace vastrelline {
namespace {

using testing::Contains;
using testing::ElementsAre;

TEST(FrameDifference, OfEqualFramesIsNothing) {
    const Frame frame{2, 2, {1, 2, 3, 4}};
    const FrameDifference difference = FindDifference(frame, frame);
    EXPECT_EQ(difference.count, 0U);
    EXPECT_EQ(difference.largest, 0);
    EXPECT_TRUE(difference.places.empty());
    EXPECT_THAT(difference.bySize, ElementsAre(4));
}

TEST(FrameDifference, TellsPlacesAndLevels) {
    const FrameDifference difference = FindDifference({2, 2, {1, 2, 3, 65535}}, {2, 2, {1, 5, 3, 0}});
    EXPECT_EQ(difference.count, 2U);
    EXPECT_EQ(difference.largest, 65535);
    EXPECT_EQ(difference.largestOne, (PixelDifference{1, 1, 65535, 0}));
    EXPECT_THAT(difference.places, ElementsAre(PixelDifference{1, 0, 2, 5}, PixelDifference{1, 1, 65535, 0}));
    ASSERT_EQ(difference.bySize.size(), 65536U);
    EXPECT_EQ(difference.bySize[0], 2U);
    EXPECT_EQ(difference.bySize[3], 1U);
    EXPECT_EQ(difference.bySize[65535], 1U);
}

// Twelve pixels, each in a part of its own: of these the 0th, 11 / 9 = 1st, 22 / 9 = 2nd ... 11th are taken.
TEST(FrameDifference, ShowsTenPlacesAndCountsAll) {
    const FrameDifference difference =
        FindDifference({4, 3, std::vector<uint16_t>(12, 1)}, {4, 3, std::vector<uint16_t>(12, 3)});
    EXPECT_EQ(difference.count, 12U);
    EXPECT_EQ(difference.largest, 2);
    EXPECT_EQ(difference.largestOne, (PixelDifference{0, 0, 1, 3}));
    ASSERT_EQ(difference.places.size(), 10U);
    EXPECT_EQ(difference.places.front(), (PixelDifference{0, 0, 1, 3}));
    EXPECT_EQ(difference.places[5], (PixelDifference{2, 1, 1, 3}));  // 55 / 9 = 6th
    EXPECT_EQ(difference.places.back(), (PixelDifference{3, 2, 1, 3}));
}

// The upper left part differs everywhere, and one pixel far from it does.
TEST(FrameDifference, FindsTheLonePlaceBesideMany) {
    const Frame first{80, 80, std::vector<uint16_t>(6400, 100)};
    Frame second = first;
    for (size_t y = 0; y < 10; ++y)
        for (size_t x = 0; x < 10; ++x) second.pixels[y * 80 + x] = 101;
    second.pixels[70 * 80 + 75] = 99;
    const FrameDifference difference = FindDifference(first, second);
    EXPECT_EQ(difference.count, 101U);
    ASSERT_EQ(difference.places.size(), 10U);
    EXPECT_THAT(difference.places, Contains(PixelDifference{75, 70, 100, 99}));
    EXPECT_EQ(difference.places[0], (PixelDifference{0, 0, 100, 101}));
    EXPECT_EQ(difference.places[8], (PixelDifference{8, 0, 100, 101}));
    EXPECT_THAT(difference.bySize, ElementsAre(6299, 101));
}

TEST(FrameDifference, OfFramesWithoutPixelsIsNothing) {
    EXPECT_EQ(FindDifference({0, 0, {}}, {0, 0, {}}).count, 0U);
}

TEST(AbsoluteDifference, HasNoSign) {
    const Frame difference = AbsoluteDifference({2, 2, {1, 5, 0, 65535}}, {2, 2, {5, 1, 65535, 65535}});
    EXPECT_EQ(difference.width, 2);
    EXPECT_EQ(difference.height, 2);
    EXPECT_THAT(difference.pixels, ElementsAre(4, 4, 65535, 0));
}

}  // namespace
}  // namespace vastrelline
