// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "stages/adaptive_smoothing/AdaptiveSmoothingParams.h"
#include "support/ConfiguredRun.h"

namespace vastrelline {
namespace {

AdaptiveSmoothingParams Read(const char* profile) {
    const ConfiguredRun run;
    run.WriteProfile(profile);
    return ReadAdaptiveSmoothingParams(run.Wide(L"profile.ini"), L"Molar", 3);
}

TEST(AdaptiveSmoothingParams, MissingKeysGiveTheDefaults) {
    const AdaptiveSmoothingParams params =
        Read("[Molar]\r\nADAPTIVESMOOTHING_MASK=7\r\n04_ADAPTIVESMOOTHING_ORDER=2\r\n");
    EXPECT_EQ(params.ADAPTIVESMOOTHING_MASK, 15.0);
    EXPECT_EQ(params.ADAPTIVESMOOTHING_ORDER, 4);
    EXPECT_EQ(params.ADAPTIVESMOOTHING_Mode, 0);
}

TEST(AdaptiveSmoothingParams, KeysStandUnderThePosition) {
    const AdaptiveSmoothingParams params = Read(
        "[Molar]\r\n03_ADAPTIVESMOOTHING_MASK=2.5\r\n03_ADAPTIVESMOOTHING_ORDER=-20\r\n"
        "03_ADAPTIVESMOOTHING_MODE=1\r\n");  // names match without regard to case
    EXPECT_EQ(params.ADAPTIVESMOOTHING_MASK, 2.5);
    EXPECT_EQ(params.ADAPTIVESMOOTHING_ORDER, -20);
    EXPECT_EQ(params.ADAPTIVESMOOTHING_Mode, 1);
}

}  // namespace
}  // namespace vastrelline
