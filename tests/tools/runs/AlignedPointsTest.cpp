// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "runs/AlignedPoints.h"

namespace vastrelline {
namespace {

PlannedPlace Place(int32_t stageNumber, int32_t position) {
    PlannedPlace place;
    place.stageNumber = stageNumber;
    place.position = position;
    return place;
}

const PlannedPlace kClaheFirst = Place(9, 0);
const PlannedPlace kClaheSecond = Place(9, 1);
const PlannedPlace kGammaFirst = Place(10, 0);
const RanStage kFirstClahe{&kClaheFirst, "CLAHE", {}};
const RanStage kSecondClahe{&kClaheSecond, "CLAHE", {}};
const RanStage kGamma{&kGammaFirst, "Gamma curve", {}};

StagePoint Point(PointKind kind, std::optional<Frame> frame, const RanStage* stage = nullptr) {
    return {
        kind, stage == nullptr ? std::string(PointName(kind)) : stage->title, stage, {}, std::move(frame), {},
        {}};
}

const Frame kFrame{2, 1, {5, 6}};

std::vector<AlignedPoint> Align(const std::vector<StagePoint>& left, const std::vector<StagePoint>& right) {
    std::vector<const StagePoint*> lists[2];
    for (const StagePoint& point : left) lists[0].push_back(&point);
    for (const StagePoint& point : right) lists[1].push_back(&point);
    return AlignPoints(lists[0], lists[1]);
}

TEST(AlignedPoints, FindNoDifferenceInEqualRuns) {
    const std::vector<StagePoint> run{
        Point(PointKind::Input, kFrame), Point(PointKind::Stage, kFrame, &kGamma),
        Point(PointKind::Stage, std::nullopt, &kSecondClahe), Point(PointKind::Result, kFrame)};
    const std::vector<AlignedPoint> points = Align(run, run);
    ASSERT_EQ(points.size(), 4U);
    EXPECT_EQ(points[1].title, "Gamma curve");
    EXPECT_TRUE(points[1].isShown);
    EXPECT_FALSE(points[2].isShown);
    EXPECT_FALSE(points[2].isDifferent);
    EXPECT_FALSE(FindFirstDifference(points));
}

TEST(AlignedPoints, CountPixelsAndGoOnBehindAStageThatOnlyOneHas) {
    const std::vector<AlignedPoint> points =
        Align({Point(PointKind::Input, kFrame), Point(PointKind::Stage, Frame{2, 1, {1, 20}}, &kFirstClahe),
               Point(PointKind::Result, Frame{2, 1, {1, 20}})},
              {Point(PointKind::Input, kFrame), Point(PointKind::Stage, kFrame, &kGamma),
               Point(PointKind::Stage, Frame{2, 1, {4, 13}}, &kSecondClahe),
               Point(PointKind::Result, Frame{2, 1, {1, 13}})});
    ASSERT_EQ(points.size(), 4U);
    EXPECT_FALSE(points[0].isDifferent);
    EXPECT_EQ(points[1].title, "Gamma curve");
    EXPECT_FALSE(points[1].left);
    EXPECT_EQ(points[1].right, 1U);
    EXPECT_TRUE(points[1].isDifferent);
    EXPECT_EQ(points[2].left, 1U);
    EXPECT_EQ(points[2].right, 2U);
    EXPECT_EQ(points[2].differing, 2U);
    EXPECT_EQ(points[2].largest, 7);
    EXPECT_EQ(points[3].differing, 1U);
    EXPECT_EQ(FindFirstDifference(points), 1U);
}

TEST(AlignedPoints, KeepStagesOfOneKindAtTheirPositions) {
    const std::vector<AlignedPoint> points =
        Align({Point(PointKind::Stage, kFrame, &kFirstClahe), Point(PointKind::Stage, kFrame, &kSecondClahe)},
              {Point(PointKind::Stage, kFrame, &kSecondClahe)});
    ASSERT_EQ(points.size(), 2U);
    EXPECT_FALSE(points[0].right);
    EXPECT_EQ(points[1].right, 0U);
}

TEST(AlignedPoints, TakeAFrameThatOnlyOneShowsForADifference) {
    const std::vector<StagePoint> shown{Point(PointKind::Stage, kFrame, &kGamma)};
    for (const std::optional<Frame>& other : {std::optional<Frame>(), std::optional(Frame{1, 2, {5, 6}})}) {
        const std::vector<AlignedPoint> points = Align(shown, {Point(PointKind::Stage, other, &kGamma)});
        ASSERT_EQ(points.size(), 1U);
        EXPECT_TRUE(points[0].isDifferent);
        EXPECT_FALSE(points[0].isShown);
    }
}

}  // namespace
}  // namespace vastrelline
