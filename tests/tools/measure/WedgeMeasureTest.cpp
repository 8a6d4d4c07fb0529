// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>

#include "measure/WedgeMeasure.h"
#include "phantom/WedgePhantom.h"

namespace vastrelline {
namespace {

// Steps of 60 x 384 pixels inside have 3 x 24 blocks: the deviation errs by 1.2533 * sqrt(2 / 253) / sqrt(72)
// / 2 = 0.66 %, five of which are allowed; a mean by sigma / sqrt(23040).
TEST(WedgeMeasure, FindsLevelsNoiseAndContrastOfThePhantom) {
    for (const uint64_t seed : {1U, 7U}) {
        const WedgePhantom phantom{{400, 384}, {500.0, 3500.0, 4095, seed}, {2.0, 8.0, 20.0, 50.0}};
        const WedgeMeasure measure = MeasureWedge(MakeWedgePhantom(phantom), 4);
        const std::vector<WedgeStep> truth = WedgeStepsOf(phantom);
        EXPECT_FALSE(measure.runsDown);
        ASSERT_EQ(measure.steps.size(), 4U);
        double before = 0.0;
        for (size_t i = 0; i < 4; ++i) {
            const MeasuredStep& step = measure.steps[i];
            const double noise = std::sqrt(truth[i].noise * truth[i].noise + 1.0 / 12.0);
            EXPECT_NEAR(step.noise.mean, truth[i].level, 5.0 * noise / std::sqrt(23040.0));
            EXPECT_NEAR(step.noise.deviation, noise, 0.033 * noise);
            EXPECT_FALSE(step.isClipped);
            if (i > 0) {
                const double expected = 1000.0 / std::sqrt(0.5 * (noise * noise + before * before));
                EXPECT_NEAR(step.contrastToNoise.value(), expected, 0.04 * expected);
                EXPECT_NEAR(step.difference.value(), 1000.0, 5.0);
            }
            before = noise;
        }
        EXPECT_EQ(measure.steps[0].difference, std::nullopt);
    }
}

TEST(WedgeMeasure, FindsStepsThatLieBelowEachOther) {
    const WedgePhantom phantom{{100, 80}, {500.0, 3500.0, 4095, 1}, {4.0, 4.0}};
    const WedgeMeasure measure = MeasureWedge(Transpose(MakeWedgePhantom(phantom)), 2);
    EXPECT_TRUE(measure.runsDown);
    EXPECT_EQ(measure.steps[1].area, (PixelArea{0, 60, 80, 30}));
    EXPECT_NEAR(measure.steps[1].noise.mean, 3500.0, 1.0);
}

TEST(WedgeMeasure, CutStepsHaveNoNoise) {
    Frame frame = MakeWedgePhantom({{100, 80}, {500.0, 3500.0, 4095, 1}, {4.0, 4.0}});
    for (int32_t y = 0; y < 80; ++y)
        for (int32_t x = 50; x < 100; ++x) frame.pixels[static_cast<size_t>(100 * y + x)] = 4095;
    const WedgeMeasure measure = MeasureWedge(frame, 2);
    EXPECT_TRUE(measure.steps[1].isClipped);
    EXPECT_EQ(measure.steps[1].contrastToNoise, std::nullopt);
}

TEST(WedgeMeasure, StepsWithoutNoiseHaveNoContrastToIt) {
    const WedgeMeasure measure =
        MeasureWedge(MakeWedgePhantom({{100, 80}, {500.0, 3500.0, 4095, 1}, {0.0, 0.0}}), 2);
    EXPECT_EQ(measure.steps[1].difference, 3000.0);
    EXPECT_EQ(measure.steps[1].contrastToNoise, std::nullopt);
}

TEST(WedgeMeasure, OneStepIsAnEvenArea) {
    const Frame flat{20, 20, std::vector<uint16_t>(400, 9)};
    const WedgeMeasure measure = MeasureWedge(flat, 1);
    EXPECT_EQ(measure.steps[0].noise.mean, 9.0);
    EXPECT_EQ(measure.steps[0].noise.deviation, 0.0);
}

TEST(WedgeMeasure, RefusesWhatHasNoSteps) {
    const Frame flat{200, 200, std::vector<uint16_t>(40000, 4095)};
    EXPECT_THROW(MeasureWedge(flat, 8), CannotMeasure);
    EXPECT_THROW(MeasureWedge(MakeWedgePhantom({{200, 200}, {500.0, 900.0, 4095, 1}, {9.0}}), 8),
                 CannotMeasure);
    EXPECT_THROW(MeasureWedge({10, 10, std::vector<uint16_t>(100, 9)}, 8), CannotMeasure);
    EXPECT_THROW(MeasureWedge({1, 1, {9}}, 1), CannotMeasure);
}

}  // namespace
}  // namespace vastrelline
