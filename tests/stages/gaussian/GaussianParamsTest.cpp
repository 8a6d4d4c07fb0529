// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string_view>

#include "stages/gaussian/GaussianParams.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

GaussianParams ParamsAt(std::string_view profile, int32_t position) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "profile.ini", profile);
    return ReadGaussianParams(folder.Wide(L"profile.ini"), L"Molar", position);
}

void ExpectParams(const GaussianParams& params, double size, int32_t repeat, int32_t ratio,
                  int32_t protectOutline) {
    EXPECT_EQ(params.GAUSSIAN_SIZE, size);
    EXPECT_EQ(params.GAUSSIAN_REPEAT, repeat);
    EXPECT_EQ(params.GAUSSIAN_ReduceTimeRatio, ratio);
    EXPECT_EQ(params.GAUSSIAN_ProtectOutline, protectOutline);
}

constexpr std::string_view kTwoPositions =
    "[Molar]\r\n"
    "GAUSSIAN_SIZE=9\r\nGAUSSIAN_REPEAT=9\r\nGAUSSIAN_ReduceTimeRatio=9\r\nGAUSSIAN_ProtectOutline=9\r\n"
    "03_GAUSSIAN_SIZE=2.75\r\n03_GAUSSIAN_REPEAT=4\r\n"
    "03_GAUSSIAN_ReduceTimeRatio=2\r\n03_GAUSSIAN_ProtectOutline=0\r\n"
    "100_GAUSSIAN_SIZE=0.5\r\n100_GAUSSIAN_REPEAT=7\r\n"
    "100_GAUSSIAN_ReduceTimeRatio=3\r\n100_GAUSSIAN_ProtectOutline=5\r\n"
    "[Other]\r\n04_GAUSSIAN_SIZE=8\r\n04_GAUSSIAN_REPEAT=8\r\n";

TEST(GaussianParams, KeysAreNamedByThePositionInTheList) {
    ExpectParams(ParamsAt(kTwoPositions, 3), 2.75, 4, 2, 0);
    ExpectParams(ParamsAt(kTwoPositions, 100), 0.5, 7, 3, 5);
}

TEST(GaussianParams, KeysWithoutPositionOrOfAnotherSectionAreNoMatter) {
    ExpectParams(ParamsAt(kTwoPositions, 4), 1.0, 1, 1, 1);
}

TEST(GaussianParams, MissingKeySectionOrFileGivesTheDefaults) {
    ExpectParams(ParamsAt("[Molar]\r\nOUTPUTRANGE=4095\r\n", 0), 1.0, 1, 1, 1);
    ExpectParams(ParamsAt("", 0), 1.0, 1, 1, 1);
    const TemporaryFolder folder;
    ExpectParams(ReadGaussianParams(folder.Wide(L"missing.ini"), L"Molar", 0), 1.0, 1, 1, 1);
}

TEST(GaussianParams, EachKeyHasItsOwnDefault) {
    ExpectParams(ParamsAt("[Molar]\r\n00_GAUSSIAN_SIZE=3.5\r\n", 0), 3.5, 1, 1, 1);
    ExpectParams(ParamsAt("[Molar]\r\n00_GAUSSIAN_REPEAT=0\r\n", 0), 1.0, 0, 1, 1);
    ExpectParams(ParamsAt("[Molar]\r\n00_GAUSSIAN_ReduceTimeRatio=2\r\n", 0), 1.0, 1, 2, 1);
    ExpectParams(ParamsAt("[Molar]\r\n00_GAUSSIAN_ProtectOutline=0\r\n", 0), 1.0, 1, 1, 0);
}

TEST(GaussianParams, ValuesWithoutANumberAreZero) {
    ExpectParams(ParamsAt("[Molar]\r\n00_GAUSSIAN_SIZE=soft\r\n00_GAUSSIAN_REPEAT=often\r\n"
                          "00_GAUSSIAN_ReduceTimeRatio=half\r\n00_GAUSSIAN_ProtectOutline=yes\r\n",
                          0),
                 0.0, 0, 0, 0);
}

TEST(GaussianParams, HostileValuesArriveAsTheyStand) {
    ExpectParams(ParamsAt("[Molar]\r\n00_GAUSSIAN_SIZE=-1e9\r\n00_GAUSSIAN_REPEAT=2147483647\r\n"
                          "00_GAUSSIAN_ReduceTimeRatio=-1\r\n00_GAUSSIAN_ProtectOutline=-7\r\n",
                          0),
                 -1e9, INT_MAX, -1, -7);
}

}  // namespace
}  // namespace vastrelline
