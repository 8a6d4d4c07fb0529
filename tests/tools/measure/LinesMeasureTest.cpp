// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>

#include "measure/LinesMeasure.h"
#include "measure/MeasuredArea.h"
#include "phantom/LinesPhantom.h"

namespace vastrelline {
namespace {

// The mean of some 24 rows of 400 pixels under a Hann window: the amplitude errs by noise * sqrt(3 / (24 *
// 400)), 1.8 % of the noise; five of these, and half a level for the rounding.
TEST(LinesMeasure, FindsFrequenciesAndContrastsOfThePhantom) {
    for (const double noise : {0.0, 8.0, 30.0}) {
        const LinesPhantom phantom{
            {400, 240}, {500.0, 3500.0, 4095, 3}, noise, 0.7, {0.05, 0.1, 0.15, 0.2, 0.3, 0.4}};
        const LinesMeasure measure = MeasureLines(MakeLinesPhantom(phantom));
        const std::vector<LineGroup> truth = LineGroupsOf(phantom);
        EXPECT_FALSE(measure.isLying);
        ASSERT_EQ(measure.groups.size(), truth.size()) << noise;
        for (size_t i = 0; i < truth.size(); ++i) {
            EXPECT_NEAR(measure.groups[i].frequency, truth[i].frequency, 1e-4);
            EXPECT_NEAR(measure.groups[i].amplitude, truth[i].amplitude, 0.5 + 0.09 * noise);
            EXPECT_NEAR(measure.groups[i].modulation, truth[i].modulation, 0.001 + 0.09 * noise / 2000.0);
            EXPECT_LE(std::abs(measure.groups[i].top - truth[i].top), 1);
        }
    }
}

TEST(LinesMeasure, FindsLyingLinesAndOneGroupAlone) {
    const LinesPhantom phantom{{200, 80}, {500.0, 3500.0, 4095, 3}, 8.0, 0.7, {0.13}};
    const Frame frame = MakeLinesPhantom(phantom);
    const LinesMeasure lying = MeasureLines(Transpose(frame));
    EXPECT_TRUE(lying.isLying);
    ASSERT_EQ(lying.groups.size(), 1U);
    EXPECT_NEAR(lying.groups[0].frequency, 0.13, 1e-3);
    const LinesMeasure alone = MeasureLines(CutArea(frame, {0, 20, 200, 40}));
    ASSERT_EQ(alone.groups.size(), 1U);
    EXPECT_EQ(alone.groups[0].height, 40);
    EXPECT_NEAR(alone.groups[0].modulation, LineGroupsOf(phantom)[0].modulation, 0.005);
}

TEST(LinesMeasure, RefusesWhatHasNoLines) {
    EXPECT_THROW(MeasureLines({31, 31, std::vector<uint16_t>(31 * 31, 9)}), CannotMeasure);
    EXPECT_THROW(MeasureLines({100, 100, std::vector<uint16_t>(10000, 0)}), CannotMeasure);
    EXPECT_THROW(MeasureLines({100, 100, std::vector<uint16_t>(10000, 4095)}), CannotMeasure);
    const LinesPhantom noise{{200, 100}, {2000.0, 2000.001, 4095, 3}, 30.0, 0.7, {0.1}};
    EXPECT_THROW(MeasureLines(MakeLinesPhantom(noise)), CannotMeasure);
}

}  // namespace
}  // namespace vastrelline
