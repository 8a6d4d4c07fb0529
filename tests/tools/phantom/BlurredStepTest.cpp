// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>

#include "phantom/BlurredStep.h"

namespace vastrelline {
namespace {

const double kRootOfTwo = std::sqrt(2.0);

TEST(NormalShare, AgreesWithTheErrorFunction) {
    for (int i = -900; i <= 900; ++i) {
        const double x = i / 100.0;
        EXPECT_NEAR(NormalShare(x), 0.5 * std::erfc(-x / kRootOfTwo), 1e-14)
            << x;  // half of what ExactExp may err
    }
    EXPECT_EQ(NormalShare(1e300), 1.0);
    EXPECT_EQ(NormalShare(-1e300), 0.0);
}

TEST(BlurredStep, ASharpUprightEdgeIsTheAreaOfThePixel) {
    const BlurredStep step(0.0, 0.0);
    EXPECT_EQ(step.ShareAt(-0.5), 0.0);
    EXPECT_EQ(step.ShareAt(-0.25), 0.25);
    EXPECT_EQ(step.ShareAt(0.0), 0.5);
    EXPECT_EQ(step.ShareAt(0.25), 0.75);
    EXPECT_EQ(step.ShareAt(9.0), 1.0);
}

// A pixel on its corner: half its diagonal from the middle the edge cuts off a triangle of height h, whose
// area is h * h.
TEST(BlurredStep, ASharpDiagonalEdgeCutsTriangles) {
    const BlurredStep step(45.0, 0.0);
    const double height = kRootOfTwo / 4.0;
    EXPECT_NEAR(step.ShareAt(0.0), 0.5, 1e-12);
    EXPECT_NEAR(step.ShareAt(kRootOfTwo / 2.0 - height), 1.0 - height * height, 1e-12);
    EXPECT_NEAR(step.ShareAt(height - kRootOfTwo / 2.0), height * height, 1e-12);
    EXPECT_EQ(step.ShareAt(0.708), 1.0);
    EXPECT_EQ(BlurredStep(-45.0, 0.0).ShareAt(0.1), step.ShareAt(0.1));
}

// Another way: points spread evenly over the pixel, each with the share that a blurred edge has there.
TEST(BlurredStep, IsTheMeanOverThePixel) {
    constexpr int kPoints =
        200;  // the midpoint rule errs by less than 1 / (24 * 200^2) of the second derivative
    for (const double angle : {0.0, 2.0, 17.0, 45.0})
        for (const double blur : {0.3, 0.7, 2.0})
            for (const double distance : {-3.0, -0.6, 0.0, 0.2, 1.1}) {
                const double radians = angle * std::acos(-1.0) / 180.0;
                double sum = 0.0;
                for (int i = 0; i < kPoints; ++i)
                    for (int k = 0; k < kPoints; ++k) {
                        const double across = (i + 0.5) / kPoints - 0.5;
                        const double down = (k + 0.5) / kPoints - 0.5;
                        const double point = distance + across * std::cos(radians) + down * std::sin(radians);
                        sum += 0.5 * std::erfc(-point / blur / kRootOfTwo);
                    }
                EXPECT_NEAR(BlurredStep(angle, blur).ShareAt(distance), sum / (kPoints * kPoints), 1e-5)
                    << angle << ' ' << blur << ' ' << distance;
            }
}

TEST(BlurredStep, RisesWithoutJumps) {
    for (const double angle : {0.0, 1e-5, 0.01, 5.0, 45.0})
        for (const double blur : {0.0, 1e-3, 0.7, 30.0}) {
            const BlurredStep step(angle, blur);
            double before = 0.0;
            for (int i = -4000; i <= 4000; ++i) {
                const double share = step.ShareAt(i / 10.0);
                ASSERT_GE(share, before - 1e-6) << angle << ' ' << blur << ' ' << i;
                before = share;
            }
            EXPECT_EQ(before, 1.0);
        }
}

TEST(BlurredStep, ModulationIsThatOfBlurTimesPixel) {
    EXPECT_EQ(BlurredStep(0.0, 0.7).ModulationAt(0.0), 1.0);
    EXPECT_NEAR(BlurredStep(0.0, 0.0).ModulationAt(0.5), 2.0 / std::acos(-1.0), 1e-14);
    // exp(-2 pi^2 * 0.5^2 * 0.2^2) = exp(-0.19739) = 0.820869
    const double blurAlone =
        BlurredStep(0.0, 0.5).ModulationAt(0.2) / BlurredStep(0.0, 0.0).ModulationAt(0.2);
    EXPECT_NEAR(blurAlone, 0.820869, 1e-6);
    // Two boxes of half the root of two: (sin(a) / a)^2 with a = pi * 0.5 * 0.707107 = 1.110721, 0.650766
    EXPECT_NEAR(BlurredStep(45.0, 0.0).ModulationAt(0.5), 0.650766, 1e-6);
}

TEST(BlurredStep, RiseOfASharpEdgeIsEightTenthsOfThePixel) {
    EXPECT_NEAR(BlurredStep(0.0, 0.0).RiseDistance(), 0.8, 1e-9);
    // A broad blur leaves nothing to the pixel: from -1.281552 to 1.281552 sigma.
    EXPECT_NEAR(BlurredStep(0.0, 30.0).RiseDistance(), 2.0 * 1.281552 * 30.0, 0.01);
}

TEST(BlurredStep, HalfModulationIsWhereOneHalfIsLeft) {
    for (const double blur : {0.0, 0.5, 2.0}) {
        const BlurredStep step(5.0, blur);
        EXPECT_NEAR(step.ModulationAt(step.HalfModulation()), 0.5, 1e-9) << blur;
    }
    // exp(-2 pi^2 * 30^2 * f^2) = 0.5 at f = 0.187390 / 30
    EXPECT_NEAR(BlurredStep(0.0, 30.0).HalfModulation(), 0.187390 / 30.0, 1e-6);
}

}  // namespace
}  // namespace vastrelline
