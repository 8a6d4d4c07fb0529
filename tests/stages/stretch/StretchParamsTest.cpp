// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string_view>

#include "stages/stretch/StretchParams.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

StretchParams ParamsAt(std::string_view profile, int32_t position) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "profile.ini", profile);
    return ReadStretchParams(folder.Wide(L"profile.ini"), L"Molar", position);
}

void ExpectParams(const StretchParams& actual, const StretchParams& expected) {
    EXPECT_EQ(actual.STRETCH_SEPARATION_CNT, expected.STRETCH_SEPARATION_CNT);
    EXPECT_EQ(actual.RESTRETCH_OPTION, expected.RESTRETCH_OPTION);
    EXPECT_EQ(actual.LEFT_LEN_LIMIT, expected.LEFT_LEN_LIMIT);
    EXPECT_EQ(actual.RIGHT_LEN_LIMIT, expected.RIGHT_LEN_LIMIT);
    EXPECT_EQ(actual.STRETCH_LEFT_WEIGHT, expected.STRETCH_LEFT_WEIGHT);
    EXPECT_EQ(actual.STRETCH_RIGHT_WEIGHT, expected.STRETCH_RIGHT_WEIGHT);
    EXPECT_EQ(actual.STRETCH_LIMITBIN, expected.STRETCH_LIMITBIN);
}

constexpr std::string_view kAllKeys =
    "[Molar]\r\n"
    "03_STRETCH_SEPARATION_CNT=2\r\n03_RESTRETCH_OPTION=1\r\n03_LEFT_LEN_LIMIT=300\r\n"
    "03_RIGHT_LEN_LIMIT=-7\r\n03_STRETCH_LEFT_WEIGHT=2.5\r\n03_STRETCH_RIGHT_WEIGHT=1e308\r\n"
    "03_STRETCH_LIMITBIN=2147483647\r\n"
    "STRETCH_SEPARATION_CNT=5\r\nLEFT_LEN_LIMIT=5\r\nSTRETCH_LEFT_WEIGHT=5\r\n";

TEST(StretchParams, KeysAreNamedByThePositionInTheList) {
    ExpectParams(ParamsAt(kAllKeys, 3), {2, 1, 300, -7, 2.5, 1e308, INT_MAX});
}

TEST(StretchParams, MissingKeysGiveTheDefaults) {
    ExpectParams(ParamsAt(kAllKeys, 4), {0, 2, 1000, 500, 4.0, 4.0, 50});
    ExpectParams(ParamsAt("", 0), {0, 2, 1000, 500, 4.0, 4.0, 50});
}

TEST(StretchParams, FixedChainHasTheSameKeys) {
    FixedSettings settings;
    ExpectParams(StretchParamsOf(settings), {0, 2, 1000, 500, 4.0, 4.0, 50});
    settings.STRETCH_SEPARATION_CNT = 1;
    settings.RESTRETCH_OPTION = 3;
    settings.LEFT_LEN_LIMIT = 4;
    settings.RIGHT_LEN_LIMIT = 5;
    settings.STRETCH_LEFT_WEIGHT = 6.5;
    settings.STRETCH_RIGHT_WEIGHT = 7.5;
    settings.STRETCH_LIMITBIN = 8;
    ExpectParams(StretchParamsOf(settings), {1, 3, 4, 5, 6.5, 7.5, 8});
}

}  // namespace
}  // namespace vastrelline
