// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>

#include "phantom/PhantomJaw.h"
#include "phantom/PhantomShape.h"
#include "phantom/PhantomTeeth.h"
#include "phantom/PhantomTexture.h"

namespace vastrelline {
namespace {

TEST(DepthMap, IsTheDistanceToTheOutline) {
    const DepthMap square({{0.0, 0.0}, {4.0, 0.0}, {4.0, 4.0}, {0.0, 4.0}});
    EXPECT_NEAR(square.At(2.0, 2.0), 2.0, 0.05);
    EXPECT_NEAR(square.At(1.0, 2.0), 1.0, 0.01);
    EXPECT_NEAR(square.At(2.0, 3.5), 0.5, 0.01);
    EXPECT_NEAR(square.At(-0.5, 2.0), -0.5, 0.01);
    EXPECT_NEAR(square.At(-0.3, -0.4), -0.5, 0.02);
}

TEST(DepthMap, EndsAtItsReach) {
    const DepthMap square({{0.0, 0.0}, {4.0, 0.0}, {4.0, 4.0}, {0.0, 4.0}});
    EXPECT_EQ(square.At(-50.0, 2.0), -DepthMap::kReachMm);
    EXPECT_EQ(square.At(2.0, 1e30), -DepthMap::kReachMm);
    EXPECT_EQ(square.At(std::nan(""), 2.0), -DepthMap::kReachMm);
}

TEST(SmoothOutline, PassesThroughItsPoints) {
    const std::vector<PointMm> points{{0.0, 0.0}, {4.0, 0.0}, {4.0, 4.0}, {0.0, 4.0}};
    const std::vector<PointMm> outline = SmoothOutline(points);
    ASSERT_EQ(outline.size() % points.size(), 0U);
    const size_t pieces = outline.size() / points.size();
    for (size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(outline[i * pieces].x, points[i].x);
        EXPECT_EQ(outline[i * pieces].y, points[i].y);
    }
}

TEST(RayThroughBody, RisesLikeAnEllipse) {
    EXPECT_EQ(RayThroughBody(-1.0, 2.0, 8.0), 0.0);
    EXPECT_EQ(RayThroughBody(0.0, 2.0, 8.0), 0.0);
    EXPECT_DOUBLE_EQ(RayThroughBody(1.0, 2.0, 8.0), 8.0 * std::sqrt(0.75));
    EXPECT_EQ(RayThroughBody(2.0, 2.0, 8.0), 8.0);
    EXPECT_EQ(RayThroughBody(9.0, 2.0, 8.0), 8.0);
}

TEST(SmoothNoise, LiesBetweenZeroAndOneWithoutJumps) {
    double sum = 0.0;
    for (int i = 0; i < 10000; ++i) {
        const double x = 0.013 * i - 60.0;
        const double level = SmoothNoise(5, x, 3.7 * x);
        EXPECT_GE(level, 0.0);
        EXPECT_LE(level, 1.0);
        EXPECT_NEAR(SmoothNoise(5, x + 1e-6, 3.7 * x), level, 1e-5);
        sum += level;
    }
    EXPECT_NEAR(sum / 10000.0, 0.5, 0.05);
}

TEST(TrabecularDensity, IsOneOnAverageAndVaries) {
    for (const uint64_t seed : {1U, 2U}) {
        double sum = 0.0;
        double squares = 0.0;
        for (int y = 0; y < 300; ++y)
            for (int x = 0; x < 300; ++x) {
                const double density = TrabecularDensity(seed, x * 0.317, y * 0.293);
                ASSERT_GT(density, 0.1);
                sum += density;
                squares += density * density;
            }
        const double mean = sum / 90000.0;
        EXPECT_NEAR(mean, 1.0, 0.05);
        EXPECT_GT(std::sqrt(squares / 90000.0 - mean * mean), 0.15);
    }
}

class PhantomTeethTest : public testing::TestWithParam<uint64_t> {};

TEST_P(PhantomTeethTest, ARayMeetsWhatLiesThere) {
    const PhantomTeeth teeth(GetParam());
    const ToothRay above = teeth.RayAt(13.0, 1.0);
    EXPECT_EQ(above.enamel + above.dentine + above.pulp, 0.0);
    EXPECT_EQ(above.distanceToRoot, DepthMap::kReachMm);

    const ToothRay rim = teeth.RayAt(10.6, 8.5);  // the molar's side, outside of its dentine
    EXPECT_GT(rim.enamel, 2.0);
    EXPECT_EQ(rim.dentine, 0.0);

    const ToothRay crown = teeth.RayAt(15.5, 8.8);
    EXPECT_GT(crown.enamel, 1.0);
    EXPECT_GT(crown.dentine, 6.0);

    const ToothRay chamber = teeth.RayAt(15.5, 11.4);
    EXPECT_GT(chamber.pulp, 1.0);

    const ToothRay root = teeth.RayAt(5.6, 19.0);
    EXPECT_EQ(root.enamel, 0.0);
    EXPECT_GT(root.dentine, 2.0);
    EXPECT_LT(root.distanceToRoot, 0.0);

    const ToothRay below = teeth.RayAt(13.0, 31.0);
    EXPECT_EQ(below.enamel + below.dentine + below.pulp, 0.0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, PhantomTeethTest, testing::Values(1, 2, 3, 99, UINT64_MAX));

TEST(JawRay, GumAndBoneLieBelowTheCrowns) {
    const ToothRay noTooth;
    const JawRay cheek = JawRayAt(1, noTooth, 11.0, 2.0);
    EXPECT_EQ(cheek.compactBone + cheek.spongyBone, 0.0);
    EXPECT_GT(cheek.softTissue, 3.0);
    const JawRay bone = JawRayAt(1, noTooth, 11.0, 25.0);
    EXPECT_GT(bone.compactBone, 1.0);
    EXPECT_GT(bone.spongyBone, 1.0);
    EXPECT_GT(bone.softTissue, cheek.softTissue + 4.0);
}

TEST(JawRay, ARootTakesThePlaceOfSpongyBone) {
    ToothRay root;
    root.dentine = 6.0;
    root.distanceToRoot = -2.0;
    EXPECT_LT(JawRayAt(1, root, 11.0, 25.0).spongyBone, 0.5 * JawRayAt(1, {}, 11.0, 25.0).spongyBone);
}

TEST(JawRay, ASocketIsADarkGapInsideADenseWall) {
    ToothRay gap;
    gap.distanceToRoot = 0.1;
    ToothRay wall;
    wall.distanceToRoot = 0.42;
    const JawRay away = JawRayAt(1, {}, 11.0, 22.0);
    EXPECT_LT(JawRayAt(1, gap, 11.0, 22.0).spongyBone, 0.7 * away.spongyBone);
    EXPECT_GT(JawRayAt(1, wall, 11.0, 22.0).compactBone, away.compactBone + 1.0);
}

}  // namespace
}  // namespace vastrelline
