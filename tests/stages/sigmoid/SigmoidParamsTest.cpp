// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>

#include "stages/sigmoid/SigmoidParams.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

double RatioAt(std::string_view profile, int32_t position) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "profile.ini", profile);
    return ReadSigmoidParams(folder.Wide(L"profile.ini"), L"Molar", position).POST_SIGMOID_RATIO;
}

TEST(SigmoidParams, KeyIsNamedByThePositionInTheList) {
    constexpr std::string_view kProfile =
        "[Molar]\r\nPOST_SIGMOID_RATIO=9\r\n06_POST_SIGMOID_RATIO=0.25\r\n100_POST_SIGMOID_RATIO=-0.75\r\n"
        "07_POST_SIGMOID_RATIO=wide\r\n[Other]\r\n08_POST_SIGMOID_RATIO=3\r\n";
    EXPECT_EQ(RatioAt(kProfile, 6), 0.25);
    EXPECT_EQ(RatioAt(kProfile, 100), -0.75);
    EXPECT_EQ(RatioAt(kProfile, 7), 0.0);
    EXPECT_EQ(RatioAt(kProfile, 8), 0.0);  // only in another section
}

}  // namespace
}  // namespace vastrelline
