// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <utility>

#include "views/LevelLine.h"

namespace vastrelline {
namespace {

using Points = std::vector<std::pair<double, int>>;

Points Read(const Frame& frame, const FrameLine& line) {
    Points points;
    for (const LinePoint& each : ReadLevelLine(frame, line)) points.emplace_back(each.distance, each.level);
    return points;
}

const Frame kFrame{3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9}};

TEST(LevelLine, HasAPixelAStep) {
    EXPECT_EQ(Read(kFrame, {0.5, 0.5, 2.5, 0.5}), (Points{{0, 1}, {1, 2}, {2, 3}}));
    EXPECT_EQ(Read(kFrame, {2.5, 2.5, 2.5, 0.5}), (Points{{0, 9}, {1, 6}, {2, 3}}));
    // 3-4-5: a step of one pixel along the line.
    const Frame column{4, 5,
                       std::vector<uint16_t>{1, 0, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 0, 0, 0, 5}};
    EXPECT_EQ(Read(column, {0.5, 0.5, 3.5, 4.5}), (Points{{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 4}, {5, 5}}));
}

TEST(LevelLine, OfNoLengthIsOnePoint) { EXPECT_EQ(Read(kFrame, {1.5, 1.5, 1.5, 1.5}), (Points{{0, 5}})); }

TEST(LevelLine, LeavesOutWhatIsOutside) {
    EXPECT_EQ(Read(kFrame, {-1.5, 1.5, 4.5, 1.5}), (Points{{2, 4}, {3, 5}, {4, 6}}));
    EXPECT_EQ(Read(kFrame, {-5.0, -5.0, -1.0, -1.0}), Points{});
}

TEST(LevelLine, HasItsMostPointsWhateverItsLength) {
    const Frame wide{10000, 1, std::vector<uint16_t>(10000, 3)};
    const std::vector<LinePoint> points = ReadLevelLine(wide, {0.0, 0.5, 9999.5, 0.5});
    ASSERT_EQ(points.size(), 4096U);
    EXPECT_DOUBLE_EQ(points[1].distance, 9999.5 / 4096);
    EXPECT_LT(points.back().distance, 9999.5);
}

}  // namespace
}  // namespace vastrelline
