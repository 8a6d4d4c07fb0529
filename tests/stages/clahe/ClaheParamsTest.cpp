// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "stages/clahe/ClaheParams.h"
#include "support/ConfiguredRun.h"

namespace vastrelline {
namespace {

TEST(ClaheParams, MissingKeysHaveTheirDefaults) {
    ConfiguredRun run;
    run.WriteProfile("[Molar]\r\nBLOCK_SIZE=1\r\n02_HISTO_BINS=2\r\n");
    const ClaheParams params = ReadClaheParams(run.Wide(L"profile.ini"), L"Molar", 3);
    EXPECT_EQ(params.BLOCK_SIZE, 64);
    EXPECT_EQ(params.HISTO_BINS, 256);
    EXPECT_EQ(params.MAX_SLOPE, 1.5);
}

TEST(ClaheParams, KeysCarryTheirPosition) {
    ConfiguredRun run;
    run.WriteProfile(
        "[Molar]\r\n03_BLOCK_SIZE=-7\r\n03_HISTO_BINS=12\r\n03_MAX_SLOPE=2.25\r\n"
        "100_BLOCK_SIZE=9\r\n");
    const ClaheParams params = ReadClaheParams(run.Wide(L"profile.ini"), L"Molar", 3);
    EXPECT_EQ(params.BLOCK_SIZE, -7);
    EXPECT_EQ(params.HISTO_BINS, 12);
    EXPECT_EQ(params.MAX_SLOPE, 2.25);
    EXPECT_EQ(ReadClaheParams(run.Wide(L"profile.ini"), L"Molar", 100).BLOCK_SIZE, 9);
}

// Text without a number is one for a number key, not a missing key.
TEST(ClaheParams, SlopeWithoutANumberIsZero) {
    ConfiguredRun run;
    run.WriteProfile("[Molar]\r\n03_MAX_SLOPE=steep\r\n");
    EXPECT_EQ(ReadClaheParams(run.Wide(L"profile.ini"), L"Molar", 3).MAX_SLOPE, 0.0);
}

}  // namespace
}  // namespace vastrelline
