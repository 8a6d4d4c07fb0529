// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string_view>

#include "stages/linear/LinearParams.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

LinearParams Read(std::string_view profile, int32_t position) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "profile.ini", profile);
    return ReadLinearParams(folder.Wide(L"profile.ini"), L"Molar", position);
}

void ExpectParams(const LinearParams& params, int32_t mode, int32_t limitBin, int32_t brightOpt) {
    EXPECT_EQ(params.POST_LINEAR_MODE, mode);
    EXPECT_EQ(params.POST_LINEAR_LIMITBIN, limitBin);
    EXPECT_EQ(params.POST_LINEAR_BRIGHTOPT, brightOpt);
}

TEST(LinearParams, KeysAreNamedByThePositionInTheList) {
    constexpr std::string_view kProfile =
        "[Molar]\r\nPOST_LINEAR_MODE=9\r\nPOST_LINEAR_LIMITBIN=9\r\nPOST_LINEAR_BRIGHTOPT=9\r\n"
        "03_POST_LINEAR_MODE=2\r\n03_POST_LINEAR_LIMITBIN=-1\r\n03_POST_LINEAR_BRIGHTOPT=-300\r\n"
        "100_POST_LINEAR_MODE=1\r\n100_POST_LINEAR_LIMITBIN=700\r\n100_POST_LINEAR_BRIGHTOPT=5\r\n"
        "[Other]\r\n04_POST_LINEAR_MODE=1\r\n";
    ExpectParams(Read(kProfile, 3), 2, -1, -300);
    ExpectParams(Read(kProfile, 100), 1, 700, 5);
    ExpectParams(Read(kProfile, 4), 0, 0, 0);
}

TEST(LinearParams, MissingKeysSectionOrFileAreZero) {
    ExpectParams(Read("[Molar]\r\nOUTPUTRANGE=4095\r\n", 0), 0, 0, 0);
    ExpectParams(Read("", 0), 0, 0, 0);
    const TemporaryFolder folder;
    ExpectParams(ReadLinearParams(folder.Wide(L"missing.ini"), L"Molar", 0), 0, 0, 0);
}

TEST(LinearParams, ValuesAreReadAsDoublesAndTruncated) {
    ExpectParams(Read("[Molar]\r\n00_POST_LINEAR_MODE=1.99\r\n00_POST_LINEAR_LIMITBIN=-0.99\r\n"
                      "00_POST_LINEAR_BRIGHTOPT=-1.5e2\r\n",
                      0),
                 1, 0, -150);
    ExpectParams(Read("[Molar]\r\n00_POST_LINEAR_MODE=\r\n00_POST_LINEAR_LIMITBIN=many\r\n"
                      "00_POST_LINEAR_BRIGHTOPT=12 levels\r\n",
                      0),
                 0, 0, 12);
}

// What 32 bits do not hold is their smallest number.
TEST(LinearParams, ValueBeyond32BitsIsTheSmallest) {
    ExpectParams(Read("[Molar]\r\n00_POST_LINEAR_MODE=3e9\r\n00_POST_LINEAR_LIMITBIN=-3e9\r\n"
                      "00_POST_LINEAR_BRIGHTOPT=2147483647\r\n",
                      0),
                 INT_MIN, INT_MIN, INT_MAX);
}

}  // namespace
}  // namespace vastrelline
