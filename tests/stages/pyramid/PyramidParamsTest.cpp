// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "stages/pyramid/PyramidParams.h"
#include "support/ConfiguredRun.h"

namespace vastrelline {
namespace {

TEST(PyramidParams, MissingKeysGiveTheDefaults) {
    ConfiguredRun run;
    run.WriteProfile("[Molar]\r\nPYRAMID_LAYER=9\r\n04_PYRAMID_LAYER=8\r\n");
    const PyramidParams params = ReadPyramidParams(run.Wide(L"profile.ini"), L"Molar", 3);
    EXPECT_EQ(params.PYRAMID_LAYER, 3);
    EXPECT_EQ(params.GAUSSIAN_SIZE, 1.0);
    EXPECT_EQ(params.APPLY_VARIABLE_RATIO, 0);
    EXPECT_EQ(params.ENHANCED_RATIO, 1.5);
    EXPECT_EQ(params.NOISE_WIDTH, 0.7);
    EXPECT_EQ(params.APPLY_DIFF_ENHANCE, 1);
    EXPECT_EQ(params.NOISE_CUTLIMIT, 0.01);
}

TEST(PyramidParams, KeysAreNamedByThePositionInTheList) {
    ConfiguredRun run;
    run.WriteProfile(
        "[Molar]\r\n03_PYRAMID_LAYER=5\r\n03_GAUSSIAN_SIZE=1.25\r\n03_APPLY_VARIABLE_RATIO=1\r\n"
        "03_ENHANCED_RATIO=2.5\r\n03_NOISE_WIDTH=0.5\r\n03_APPLY_DIFF_ENHANCE=0\r\n"
        "03_NOISE_CUTLIMIT=0.125\r\n");
    const PyramidParams params = ReadPyramidParams(run.Wide(L"profile.ini"), L"Molar", 3);
    EXPECT_EQ(params.PYRAMID_LAYER, 5);
    EXPECT_EQ(params.GAUSSIAN_SIZE, 1.25);
    EXPECT_EQ(params.APPLY_VARIABLE_RATIO, 1);
    EXPECT_EQ(params.ENHANCED_RATIO, 2.5);
    EXPECT_EQ(params.NOISE_WIDTH, 0.5);
    EXPECT_EQ(params.APPLY_DIFF_ENHANCE, 0);
    EXPECT_EQ(params.NOISE_CUTLIMIT, 0.125);
}

TEST(PyramidParams, RecordOfTheFixedChainHoldsTheNoiseWidthInPerCent) {
    FixedSettings settings;
    settings.PYRAMID_LAYER = 5;
    settings.GAUSSIAN_SIZE = 1.25;
    settings.APPLY_VARIABLE_RATIO = 1;
    settings.ENHANCED_RATIO = 2.5;
    settings.NOISE_WIDTH = 50;
    settings.APPLY_DIFF_ENHANCE = 0;
    settings.NOISE_CUTLIMIT = 0.125;
    const PyramidParams params = PyramidParamsOf(settings);
    EXPECT_EQ(params.PYRAMID_LAYER, 5);
    EXPECT_EQ(params.GAUSSIAN_SIZE, 1.25);
    EXPECT_EQ(params.APPLY_VARIABLE_RATIO, 1);
    EXPECT_EQ(params.ENHANCED_RATIO, 2.5);
    EXPECT_EQ(params.NOISE_WIDTH, 0.5);
    EXPECT_EQ(params.APPLY_DIFF_ENHANCE, 0);
    EXPECT_EQ(params.NOISE_CUTLIMIT, 0.125);
}

}  // namespace
}  // namespace vastrelline
