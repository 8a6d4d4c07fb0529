// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runs/StageBands.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(StageBands, AreSignedAndInTheirOrder) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "laplacian1_1x1.raw", "\x05\x00"s);
    WriteBytes(folder.Path() / "enhancedlaplacian1_1x1.raw", "\x06\x00"s);
    WriteBytes(folder.Path() / "Laplacian0_2X1.raw", "\xFF\xFF\x01\x00"s);
    WriteBytes(folder.Path() / "EnhancedLaplacian0_2X1.raw", "\xFE\xFF\x00\x80"s);
    WriteBytes(folder.Path() / "EnhancedSlope_0.txt", "-1\t-2\r\n");
    const std::vector<StageBand> bands = ReadStageBands(folder.Path().string());
    ASSERT_EQ(bands.size(), 2U);
    EXPECT_EQ(bands[0].number, 0);
    EXPECT_EQ(bands[0].before.width, 2);
    EXPECT_EQ(bands[0].before.height, 1);
    EXPECT_THAT(bands[0].before.levels, ElementsAre(-1, 1));
    EXPECT_THAT(bands[0].after.levels, ElementsAre(-2, -32768));
    EXPECT_THAT(bands[0].curve, ElementsAre(CurvePoint{-1, -2}));
    EXPECT_EQ(bands[1].number, 1);
    EXPECT_THAT(bands[1].after.levels, ElementsAre(6));
    EXPECT_THAT(bands[1].curve, IsEmpty());
}

TEST(StageBands, ThatAreNotWholeAreLeftOut) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "laplacian0_1x1.raw", "\x05\x00"s);
    WriteBytes(folder.Path() / "laplacian1_1x1.raw", "\x05\x00"s);
    WriteBytes(folder.Path() / "enhancedlaplacian1_1x1.raw", "\x05"s);
    WriteBytes(folder.Path() / "laplacian_1x1.raw", "\x05\x00"s);
    WriteBytes(folder.Path() / "laplacian2.raw", "\x05\x00"s);
    EXPECT_THAT(ReadStageBands(folder.Path().string()), IsEmpty());
}

TEST(StageBands, OfAFolderWithoutAnyAreNone) {
    EXPECT_THAT(ReadStageBands(TemporaryFolder().Narrow("missing")), IsEmpty());
}

}  // namespace
}  // namespace vastrelline
