// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "MaskedText.h"

namespace vastrelline::digest {
namespace {

using testing::ElementsAre;

struct TextCase {
    const char* name;
    const char* text;
    const char* masked;
};

class MaskTextTest : public testing::TestWithParam<TextCase> {};

TEST_P(MaskTextTest, Gives) { EXPECT_EQ(MaskText(GetParam().text, "/x/r1"), GetParam().masked); }

INSTANTIATE_TEST_SUITE_P(
    Texts, MaskTextTest,
    testing::Values(TextCase{"TimeOfDay", "#### 07:59:01 \t: CLAHE", "#### hh:mm:ss \t: CLAHE"},
                    TextCase{"Date", "= Vastrelline Log 2031.02.28 =", "= Vastrelline Log YYYY.MM.DD ="},
                    TextCase{"EarlyYear", "= Log   31.02.28 =", "= Log YYYY.MM.DD ="},
                    TextCase{"Seconds", "Gaussian ( 12.345 sec )", "Gaussian ( S.SSS sec )"},
                    TextCase{"Milliseconds", "CLAHE ( 7 ms )", "CLAHE ( N ms )"},
                    TextCase{"Folder", "WRITE_PATH=/x/r1/out/", "WRITE_PATH={folder}/out/"},
                    TextCase{"OtherNumbersStay", "Sigma : 12.345", "Sigma : 12.345"},
                    TextCase{"SecondsWithAComma", "( 12,345 sec )", "( 12,345 sec )"},
                    TextCase{"SecondsOfTwoPlaces", "( 12.34 sec )", "( 12.34 sec )"},
                    TextCase{"TimeWithoutHead", "07:59:01 ", "07:59:01 "},
                    TextCase{"CutTime", "#### 07:59", "#### 07:59"}, TextCase{"Empty", "", ""}),
    [](const auto& test) { return test.param.name; });

TEST(MaskNames, CountsFromTheSmallestNumber) {
    EXPECT_THAT(MaskNames({"out/100_a.raw", "out/99_b.raw", "out/102_c.raw", "p.ini"}),
                ElementsAre("out/+1_a.raw", "out/+0_b.raw", "out/+3_c.raw", "p.ini"));
}

TEST(MaskNames, TakesTheStampFromBackups) {
    EXPECT_THAT(MaskNames({"bak/20310228_235959_bakCalibrated.raw", "out/07_a.raw"}),
                ElementsAre("bak/T_bakCalibrated.raw", "out/+0_a.raw"));
}

TEST(MaskNames, LeavesNamesWithoutANumber) {
    EXPECT_THAT(MaskNames({"out/7_a.raw", "out/diff1_0.raw", "picture.bmp"}),
                ElementsAre("out/7_a.raw", "out/diff1_0.raw", "picture.bmp"));
}

}  // namespace
}  // namespace vastrelline::digest
