// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "stages/hdr/FusionWeights.h"

namespace vastrelline {
namespace {

// Of 2 x 2 pixels a surface of sigma 1 has four entries of exp(-0.25), one of sigma 2 four of exp(-1 / 16).
TEST(FusionWeights, EachStepOfTheFusionIsInOneOfThem) {
    const FusionLayers layers = {{1.0, 3.0F, 0.0F, 1.0F}, {2.0, 0.5F, 0.25F, 0.75F}};
    const FusionWeights weights =
        MakeFusionWeights({nullptr, 0, 100}, {nullptr, 0, 50}, 2, 2, layers, 0.5F, 0.25F);
    const double fineSum = 4 * std::exp(-0.25);
    const double coarseSum = 4 * std::exp(-1.0 / 16);
    constexpr double kSingle = 1e-8;                           // the sums are of single precision
    EXPECT_DOUBLE_EQ(weights.normal, (0.03 + 0.00375) * 0.5);  // 3 * 1 / 100, 0.5 * 0.75 / 100
    EXPECT_DOUBLE_EQ(weights.hed, 0.0025 * 0.75);              // 0.5 * 0.25 / 50
    EXPECT_NEAR(weights.fineNormal, 0.03 * 0.5 / fineSum, kSingle);
    EXPECT_NEAR(weights.coarseNormal, 0.00375 * 0.5 / coarseSum, kSingle);
    EXPECT_NEAR(weights.coarseHed, 0.0025 * 0.25 / coarseSum, kSingle);
    EXPECT_EQ(weights.fineSigma, 1.0);
    EXPECT_EQ(weights.coarseSigma, 2.0);
    EXPECT_TRUE(weights.AreFinite());
}

TEST(FusionWeights, WhatSinglePrecisionCannotHoldIsNotFinite) {
    constexpr double kBeyondSingle = 1e39;
    constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
    for (double FusionWeights::*weight :
         {&FusionWeights::normal, &FusionWeights::hed, &FusionWeights::fineNormal,
          &FusionWeights::coarseNormal, &FusionWeights::coarseHed}) {
        for (const double value : {kBeyondSingle, -kBeyondSingle, kNotANumber}) {
            FusionWeights weights = {1, 1, 1, 1, 1, 1, 1};
            EXPECT_TRUE(weights.AreFinite());
            weights.*weight = value;
            EXPECT_FALSE(weights.AreFinite());
        }
    }
}

}  // namespace
}  // namespace vastrelline
