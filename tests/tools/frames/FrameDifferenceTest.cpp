#include <gtest/gtest.h>

#include "frames/FrameDifference.h"

namespace vastrelline {
namespace {

TEST(FrameDifference, OfEqualFramesIsNothing) {
    const Frame frame{2, 2, {1, 2, 3, 4}};
    const FrameDifference difference = FindDifference(frame, frame);
    EXPECT_EQ(difference.count, 0U);
    EXPECT_EQ(difference.largest, 0);
    EXPECT_TRUE(difference.firstOnes.empty());
}

TEST(FrameDifference, TellsPlacesAndLevels) {
    const FrameDifference difference = FindDifference({2, 2, {1, 2, 3, 65535}}, {2, 2, {1, 5, 3, 0}});
    EXPECT_EQ(difference.count, 2U);
    EXPECT_EQ(difference.largest, 65535);
    EXPECT_EQ(difference.firstOnes, (std::vector<PixelDifference>{{1, 0, 2, 5}, {1, 1, 65535, 0}}));
}

TEST(FrameDifference, ShowsTenPlacesAndCountsAll) {
    const FrameDifference difference =
        FindDifference({4, 3, std::vector<uint16_t>(12, 1)}, {4, 3, std::vector<uint16_t>(12, 3)});
    EXPECT_EQ(difference.count, 12U);
    EXPECT_EQ(difference.largest, 2);
    ASSERT_EQ(difference.firstOnes.size(), 10U);
    EXPECT_EQ(difference.firstOnes.back(), (PixelDifference{1, 2, 1, 3}));
}

TEST(FrameDifference, OfFramesWithoutPixelsIsNothing) {
    EXPECT_EQ(FindDifference({0, 0, {}}, {0, 0, {}}).count, 0U);
}

}  // namespace
}  // namespace vastrelline
