// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "stages/pre_processing/PreProcessingParams.h"
#include "support/ConfiguredRun.h"

namespace vastrelline {
namespace {

TEST(PreProcessingParams, DefaultsAndKeys) {
    ConfiguredRun run;
    run.WriteProfile("[Molar]\r\n");
    PreProcessingParams params = ReadPreProcessingParams(run.Wide(L"profile.ini"), L"Molar", 3);
    EXPECT_EQ(params.PREPROCESSING_ENHANCESCALE, 2.5);
    EXPECT_EQ(params.PREPROCESSING_GAUSSIANPOWER, 6.0);
    EXPECT_EQ(params.PREPROCESSING_AUMALPHA, 1.0);
    EXPECT_EQ(params.PREPROCESSING_AUMWEIGHT, 1.0);
    EXPECT_EQ(params.PREPROCESSING_AUMPOWER, 0.0);
    EXPECT_EQ(params.PREPROCESSING_AUMRANGE, 1.0);
    run.WriteProfile(
        "[Molar]\r\n03_PREPROCESSING_ENHANCESCALE=1\r\n03_PREPROCESSING_GAUSSIANPOWER=2\r\n"
        "03_PREPROCESSING_AUMALPHA=3\r\n03_PREPROCESSING_AUMWEIGHT=4\r\n"
        "03_PREPROCESSING_AUMPOWER=5\r\n03_PREPROCESSING_AUMRANGE=6\r\n");
    params = ReadPreProcessingParams(run.Wide(L"profile.ini"), L"Molar", 3);
    EXPECT_EQ(params.PREPROCESSING_ENHANCESCALE, 1.0);
    EXPECT_EQ(params.PREPROCESSING_GAUSSIANPOWER, 2.0);
    EXPECT_EQ(params.PREPROCESSING_AUMALPHA, 3.0);
    EXPECT_EQ(params.PREPROCESSING_AUMWEIGHT, 4.0);
    EXPECT_EQ(params.PREPROCESSING_AUMPOWER, 5.0);
    EXPECT_EQ(params.PREPROCESSING_AUMRANGE, 6.0);
}

}  // namespace
}  // namespace vastrelline
