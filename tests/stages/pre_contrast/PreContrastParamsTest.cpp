// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "stages/pre_contrast/PreContrastParams.h"
#include "support/ConfiguredRun.h"

namespace vastrelline {
namespace {

TEST(PreContrastParams, MissingKeysGiveTheDefaults) {
    ConfiguredRun run;
    run.WriteProfile("[Molar]\r\nPRECONTRAST_MASK=9\r\n04_PRECONTRAST_RATIO=8\r\n");
    const PreContrastParams params = ReadPreContrastParams(run.Wide(L"profile.ini"), L"Molar", 3);
    EXPECT_EQ(params.PRECONTRAST_MASK, 15.0);
    EXPECT_EQ(params.PRECONTRAST_RATIO, 1.25);
    EXPECT_EQ(params.PRECONTRAST_RESCALE, 2.0);
}

TEST(PreContrastParams, KeysAreNamedByThePositionInTheList) {
    ConfiguredRun run;
    run.WriteProfile(
        "[Molar]\r\n03_PRECONTRAST_MASK=4.5\r\n03_PRECONTRAST_RATIO=0.75\r\n"
        "03_PRECONTRAST_RESCALE=3.9\r\n");
    const PreContrastParams params = ReadPreContrastParams(run.Wide(L"profile.ini"), L"Molar", 3);
    EXPECT_EQ(params.PRECONTRAST_MASK, 4.5);
    EXPECT_EQ(params.PRECONTRAST_RATIO, 0.75);
    EXPECT_EQ(params.PRECONTRAST_RESCALE, 3.9);
}

TEST(PreContrastParams, RecordOfTheFixedChainHasTheSameKeys) {
    FixedSettings settings;
    settings.PRECONTRAST_MASK = 4.5;
    settings.PRECONTRAST_RATIO = 0.75;
    settings.PRECONTRAST_RESCALE = 3.9;
    const PreContrastParams params = PreContrastParamsOf(settings);
    EXPECT_EQ(params.PRECONTRAST_MASK, 4.5);
    EXPECT_EQ(params.PRECONTRAST_RATIO, 0.75);
    EXPECT_EQ(params.PRECONTRAST_RESCALE, 3.9);
}

}  // namespace
}  // namespace vastrelline
