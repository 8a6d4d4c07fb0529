// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "stages/hdr/FusionTables.h"

namespace vastrelline {
namespace {

struct CountCase {
    int32_t width;
    int32_t height;
    int32_t layerCount;
};

TEST(FusionTables, LayersAreCountedByTheShorterSide) {
    for (const CountCase& c : {CountCase{1000, 800, 40}, CountCase{800, 1000, 40}, CountCase{810, 1000, 41},
                               CountCase{1000, 810, 40}, CountCase{1300, 1668, 65}, CountCase{30, 30, 2},
                               CountCase{29, 30, 1}, CountCase{31, 30, 1}, CountCase{41, 40, 2},
                               CountCase{41, 39, 1}, CountCase{9, 1000, 0}, CountCase{0, 0, 0}}) {
        EXPECT_EQ(CountFusionLayers(c.width, c.height), c.layerCount) << c.width << " x " << c.height;
    }
}

// The window of 7 has 0.950484 at 3 and 4 and 0.611260 at 5, which is 0.643105 of the largest.
TEST(FusionTables, GainsFallAlongTheWindow) {
    const std::vector<float> gains = MakeLayerGains(3, 1, 1);
    ASSERT_EQ(gains.size(), 3U);
    EXPECT_NEAR(gains[0], 1.5, 1e-5);
    EXPECT_NEAR(gains[1], 1.5, 1e-5);
    EXPECT_NEAR(gains[2], 1.321552, 1e-5);
}

TEST(FusionTables, GainsTakeMaximumAndOffset) {
    const std::vector<float> gains = MakeLayerGains(3, -4, 10);
    EXPECT_NEAR(gains[0], 8, 1e-5);  // 10 - 4 / 2
    EXPECT_NEAR(gains[2], 10 - 2 * 0.643105, 1e-5);
}

// The turn of 6.283184 in place of 2 pi puts the window off its mirror image. At 2 of 5 it is half of
// 1 + cos(0.62831905), at 3 half of 1 + cos(0.62831775): more by 0.5 * 0.5878 * 1.3e-6 = 3.82e-7, which is
// 4.22e-7 of it.
TEST(FusionTables, WindowIsNotQuiteSymmetrical) {
    const std::vector<float> gains = MakeLayerGains(2, 1000000, 1);
    EXPECT_NEAR(gains[1] - gains[0], 0.211, 0.07);
}

TEST(FusionTables, LambdasRiseFromNothingToTheMaximum) {
    // tanh is odd, so that the middle one of three stands half-way.
    EXPECT_EQ(MakeLayerLambdas(3, 0.9F), (std::vector<float>{0.0F, 0.45F, 0.9F}));
    EXPECT_EQ(MakeLayerLambdas(2, -0.5F), (std::vector<float>{0.0F, -0.5F}));
    // At places -1.5, -0.5, 0.5 and 1.5 of 4: tanh(0.9375) is 0.734071 and tanh(0.3125) is 0.302709.
    const std::vector<float> four = MakeLayerLambdas(4, 1.0F);
    EXPECT_NEAR(four[1], (0.734071 - 0.302709) / (2 * 0.734071), 1e-5);
    EXPECT_NEAR(four[2], (0.734071 + 0.302709) / (2 * 0.734071), 1e-5);
}

TEST(FusionTables, LayersAreTheFirstAndTheLast) {
    const FusionLayers layers = MakeFusionLayers(40, 1, 1, 0.9F);
    EXPECT_EQ(layers.fine.sigma, 1);
    EXPECT_EQ(layers.fine.hedShare, 0.0F);
    EXPECT_EQ(layers.fine.restShare, 1.0F);
    EXPECT_EQ(layers.coarse.sigma, 40);
    EXPECT_EQ(layers.coarse.hedShare, 0.9F);
    EXPECT_FLOAT_EQ(layers.coarse.restShare, 0.1F);
    EXPECT_GT(layers.fine.gain, layers.coarse.gain);
}

}  // namespace
}  // namespace vastrelline
