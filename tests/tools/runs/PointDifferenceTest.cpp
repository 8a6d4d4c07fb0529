// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "runs/PointDifference.h"

namespace vastrelline {
namespace {

StagePoint Point(PointKind kind, const std::string& title, std::optional<Frame> frame) {
    return {kind, title, nullptr, {}, std::move(frame), {}, {}};
}

const Frame kFrame{2, 1, {5, 6}};

TEST(PointDifference, CountsPixelsPointByPoint) {
    const std::vector<StagePoint> first{Point(PointKind::Input, "input", kFrame),
                                        Point(PointKind::Stage, "CLAHE", Frame{2, 1, {1, 20}}),
                                        Point(PointKind::Result, "result", Frame{2, 1, {1, 2}})};
    std::vector<StagePoint> second = first;
    EXPECT_EQ(FindFirstDifference(ComparePoints(first, second)), nullptr);
    second[1].frame->pixels = {4, 13};
    second[2].frame->pixels = {1, 3};
    const std::vector<PointDifference> points = ComparePoints(first, second);
    ASSERT_EQ(points.size(), 3U);
    EXPECT_TRUE(points[0].IsSame());
    EXPECT_EQ(points[1].count, 2U);
    EXPECT_EQ(points[1].largest, 7);
    EXPECT_EQ(points[2].count, 1U);
    EXPECT_EQ(FindFirstDifference(points), &points[1]);
}

TEST(PointDifference, EndsWhereOnlyOneRunHasAPoint) {
    const std::vector<StagePoint> first{Point(PointKind::Stage, "CLAHE", kFrame),
                                        Point(PointKind::Result, "result", kFrame)};
    const std::vector<StagePoint> second{Point(PointKind::Stage, "Median", kFrame),
                                         Point(PointKind::Result, "result", kFrame)};
    const std::vector<PointDifference> points = ComparePoints(first, second);
    ASSERT_EQ(points.size(), 1U);
    EXPECT_FALSE(points[0].isInBoth);
    const std::vector<PointDifference> longer = ComparePoints({}, second);
    ASSERT_EQ(longer.size(), 1U);
    EXPECT_EQ(longer[0].title, "Median");
    EXPECT_EQ(ComparePoints(second, {}).size(), 1U);
}

TEST(PointDifference, AFrameThatOnlyOneRunShowsIsADifference) {
    const std::vector<StagePoint> shown{Point(PointKind::Stage, "CLAHE", kFrame)};
    const std::vector<StagePoint> hidden{Point(PointKind::Stage, "CLAHE", std::nullopt)};
    const std::vector<StagePoint> turned{Point(PointKind::Stage, "CLAHE", Frame{1, 2, {5, 6}})};
    EXPECT_FALSE(ComparePoints(shown, hidden)[0].IsSame());
    EXPECT_FALSE(ComparePoints(shown, turned)[0].IsSame());
    const std::vector<PointDifference> neither = ComparePoints(hidden, hidden);
    EXPECT_TRUE(neither[0].IsSame());
    EXPECT_FALSE(neither[0].isShown);
}

}  // namespace
}  // namespace vastrelline
