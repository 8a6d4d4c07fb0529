// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>

#include "stages/adaptive_unsharp/UnsharpParams.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

UnsharpParams ParamsAt(std::string_view profile, int32_t position) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "profile.ini", profile);
    return ReadUnsharpParams(folder.Wide(L"profile.ini"), L"Molar", position);
}

void ExpectDefaults(const UnsharpParams& params) {
    EXPECT_EQ(params.GAUSSIAN_SIZE_CONTRAST, 3.0);
    EXPECT_EQ(params.ENAHCNED_RATIO_CONTRAST, 2.0);
    EXPECT_EQ(params.NOISE_WIDTH_CONTRAST, 0);
    EXPECT_EQ(params.MODE_CONTRAST, 0);
    EXPECT_EQ(params.PROTECTOUTLINE_CONTRAST, 1);
    EXPECT_EQ(params.ReduceTimeRatio_CONTRAST, 1);
}

constexpr std::string_view kPositionFour =
    "[Molar]\r\n04_GAUSSIAN_SIZE_CONTRAST=1.5\r\n04_ENAHCNED_RATIO_CONTRAST=-2.25\r\n"
    "04_NOISE_WIDTH_CONTRAST=7\r\n04_MODE_CONTRAST=5\r\n04_PROTECTOUTLINE_CONTRAST=-3\r\n"
    "04_ReduceTimeRatio_CONTRAST=-1\r\nMODE_CONTRAST=1\r\n[Other]\r\n00_MODE_CONTRAST=1\r\n";

TEST(UnsharpParams, KeysAreNamedByThePositionInTheList) {
    const UnsharpParams params = ParamsAt(kPositionFour, 4);
    EXPECT_EQ(params.GAUSSIAN_SIZE_CONTRAST, 1.5);
    EXPECT_EQ(params.ENAHCNED_RATIO_CONTRAST, -2.25);
    EXPECT_EQ(params.NOISE_WIDTH_CONTRAST, 7);
    EXPECT_EQ(params.MODE_CONTRAST, 5);
    EXPECT_EQ(params.PROTECTOUTLINE_CONTRAST, -3);
    EXPECT_EQ(params.ReduceTimeRatio_CONTRAST, -1);
}

TEST(UnsharpParams, MissingKeysGiveTheDefaults) {
    ExpectDefaults(ParamsAt(kPositionFour, 0));
    ExpectDefaults(ParamsAt("", 4));
}

TEST(UnsharpParams, RecordOfTheFixedChainKnowsFourOfThem) {
    FixedSettings settings;
    settings.GAUSSIAN_SIZE_CONTRAST = 1.5;
    settings.ENAHCNED_RATIO_CONTRAST = -2.25;
    settings.NOISE_WIDTH_CONTRAST = 7;
    settings.MODE_CONTRAST = 3;
    const UnsharpParams params = UnsharpParamsOf(settings);
    EXPECT_EQ(params.GAUSSIAN_SIZE_CONTRAST, 1.5);
    EXPECT_EQ(params.ENAHCNED_RATIO_CONTRAST, -2.25);
    EXPECT_EQ(params.NOISE_WIDTH_CONTRAST, 7);
    EXPECT_EQ(params.MODE_CONTRAST, 3);
    EXPECT_EQ(params.PROTECTOUTLINE_CONTRAST, 1);
    EXPECT_EQ(params.ReduceTimeRatio_CONTRAST, 1);
}

}  // namespace
}  // namespace vastrelline
