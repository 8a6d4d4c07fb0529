// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>

#include "stages/gamma/GammaParams.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

double RatioAt(std::string_view profile, int32_t position) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "profile.ini", profile);
    return ReadGammaParams(folder.Wide(L"profile.ini"), L"Molar", position).POST_GAMMA_RATIO;
}

TEST(GammaParams, KeyIsNamedByThePositionInTheList) {
    constexpr std::string_view kProfile =
        "[Molar]\r\nPOST_GAMMA_RATIO=9\r\n06_POST_GAMMA_RATIO=6.5\r\n07_POST_GAMMA_RATIO=-2.25\r\n"
        "100_POST_GAMMA_RATIO=0.75\r\n[Other]\r\n08_POST_GAMMA_RATIO=3\r\n";
    EXPECT_EQ(RatioAt(kProfile, 7), -2.25);
    EXPECT_EQ(RatioAt(kProfile, 6), 6.5);
    EXPECT_EQ(RatioAt(kProfile, 100), 0.75);
    EXPECT_EQ(RatioAt(kProfile, 8), 0.5);  // only in another section
}

TEST(GammaParams, MissingKeySectionOrFileGivesTheDefault) {
    EXPECT_EQ(RatioAt("[Molar]\r\nOUTPUTRANGE=4095\r\n", 0), 0.5);
    EXPECT_EQ(RatioAt("", 0), 0.5);
    const TemporaryFolder folder;
    EXPECT_EQ(ReadGammaParams(folder.Wide(L"missing.ini"), L"Molar", 0).POST_GAMMA_RATIO, 0.5);
}

TEST(GammaParams, ValueWithoutANumberIsZero) {
    EXPECT_EQ(RatioAt("[Molar]\r\n00_POST_GAMMA_RATIO=\r\n", 0), 0.0);
    EXPECT_EQ(RatioAt("[Molar]\r\n00_POST_GAMMA_RATIO=bright\r\n", 0), 0.0);
}

}  // namespace
}  // namespace vastrelline
