// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>

#include "config/CommonSettings.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class CommonSettingsTest : public testing::Test {
protected:
    void WriteProfile(const std::string& text) const { WriteBytes(folder_.Path() / "p.ini", text); }
    std::wstring ProfilePath() const { return folder_.Wide(L"p.ini"); }

private:
    TemporaryFolder folder_;
};

TEST_F(CommonSettingsTest, EveryFieldComesFromItsOwnKey) {
    WriteProfile(
        "[General]\r\nCAPTION=a caption\r\nVERSION=3.1\r\nPROCMODE=2\r\nSAVE_IMAGE=3\r\nSAVE_LOG=4\r\n"
        "AUTOWINDOWING=5\r\nWRITE_PATH=D:\\out\\\r\nBITALLOCATED=32\r\nBITSTORED=14\r\nLITTLEENDIAN=6\r\n"
        "SATURATION_VALUE=4000\r\nOUTPUTRANGE=16383\r\nSETCLIPBIN=0.75\r\nMSGBOX_ENABLE=7\r\n"
        "INTRAORAL_MASK=8\r\nINVERSE_INTENSITY=9\r\nINVERSE_LOGRATIO=0.125\r\nFunctionCount=11\r\n"
        "SAVE_BACKUP=12\r\nSAVE_BACKUPPATH=E:\\keep\r\n");
    CommonSettings settings;
    ASSERT_EQ(ReadCommonSettings(ProfilePath(), L"General", settings), 1);
    EXPECT_EQ(settings.CAPTION, L"a caption");
    EXPECT_EQ(settings.VERSION, L"3.1");
    EXPECT_EQ(settings.PROCMODE, 2);
    EXPECT_EQ(settings.SAVE_IMAGE, 3);
    EXPECT_EQ(settings.SAVE_LOG, 4);
    EXPECT_EQ(settings.AUTOWINDOWING, 5);
    EXPECT_EQ(settings.WRITE_PATH, L"D:\\out\\");
    EXPECT_EQ(settings.BITALLOCATED, 32);
    EXPECT_EQ(settings.BITSTORED, 14);
    EXPECT_EQ(settings.LITTLEENDIAN, 6);
    EXPECT_EQ(settings.SATURATION_VALUE, 4000);
    EXPECT_EQ(settings.OUTPUTRANGE, 16383);
    EXPECT_EQ(settings.SETCLIPBIN, 0.75);
    EXPECT_EQ(settings.MSGBOX_ENABLE, 7);
    EXPECT_EQ(settings.INTRAORAL_MASK, 8);
    EXPECT_EQ(settings.INVERSE_INTENSITY, 9);
    EXPECT_EQ(settings.INVERSE_LOGRATIO, 0.125);
    EXPECT_EQ(settings.FunctionCount, 11);
    EXPECT_EQ(settings.SAVE_BACKUP, 12);
    EXPECT_EQ(settings.SAVE_BACKUPPATH, L"E:\\keep");
}

TEST_F(CommonSettingsTest, MissingKeysTakeTheirDefaults) {
    WriteProfile("[General]\r\nUNRELATED=1\r\n");
    CommonSettings settings;
    settings.CAPTION = settings.VERSION = settings.WRITE_PATH = settings.SAVE_BACKUPPATH = L"left over";
    settings.PROCMODE = settings.SAVE_IMAGE = settings.SAVE_LOG = settings.AUTOWINDOWING = 77;
    settings.MSGBOX_ENABLE = settings.FunctionCount = settings.SAVE_BACKUP = 77;
    ASSERT_EQ(ReadCommonSettings(ProfilePath(), L"General", settings), 1);
    EXPECT_EQ(settings.CAPTION, L"");
    EXPECT_EQ(settings.VERSION, L"");
    EXPECT_EQ(settings.PROCMODE, 0);
    EXPECT_EQ(settings.SAVE_IMAGE, 0);
    EXPECT_EQ(settings.SAVE_LOG, 0);
    EXPECT_EQ(settings.AUTOWINDOWING, 0);
    EXPECT_EQ(settings.WRITE_PATH, L"");
    EXPECT_EQ(settings.BITALLOCATED, 16);
    EXPECT_EQ(settings.BITSTORED, 12);
    EXPECT_EQ(settings.LITTLEENDIAN, 1);
    EXPECT_EQ(settings.SATURATION_VALUE, 4095);
    EXPECT_EQ(settings.OUTPUTRANGE, 4095);
    EXPECT_EQ(settings.SETCLIPBIN, 0.5);
    EXPECT_EQ(settings.MSGBOX_ENABLE, 0);
    EXPECT_EQ(settings.INTRAORAL_MASK, 1);
    EXPECT_EQ(settings.INVERSE_INTENSITY, 1);
    EXPECT_EQ(settings.INVERSE_LOGRATIO, 0.2);
    EXPECT_EQ(settings.FunctionCount, 0);
    EXPECT_EQ(settings.SAVE_BACKUP, 0);
    EXPECT_EQ(settings.SAVE_BACKUPPATH, L"");
}

TEST_F(CommonSettingsTest, SectionAndKeysMatchWithoutRegardToCase) {
    WriteProfile("[general]\r\nbitstored=9\r\nFUNCTIONCOUNT=5\r\n");
    CommonSettings settings;
    ASSERT_EQ(ReadCommonSettings(ProfilePath(), L"GENERAL", settings), 1);
    EXPECT_EQ(settings.BITSTORED, 9);
    EXPECT_EQ(settings.FunctionCount, 5);
}

TEST_F(CommonSettingsTest, OnlyTheNamedSectionIsRead) {
    WriteProfile("[Settings]\r\nBITSTORED=9\r\n[General]\r\nVERSION=1\r\n[Last]\r\nBITSTORED=10\r\n");
    CommonSettings settings;
    ASSERT_EQ(ReadCommonSettings(ProfilePath(), L"General", settings), 1);
    EXPECT_EQ(settings.BITSTORED, 12);
}

struct EmptySectionCase {
    const char* name;
    const char* text;
};

class EmptySectionTest : public CommonSettingsTest, public testing::WithParamInterface<EmptySectionCase> {};

TEST_P(EmptySectionTest, ReturnsZeroAndFillsNothing) {
    WriteProfile(GetParam().text);
    CommonSettings settings;
    settings.VERSION = L"kept";
    settings.BITSTORED = 77;
    EXPECT_EQ(ReadCommonSettings(ProfilePath(), L"General", settings), 0);
    EXPECT_EQ(settings.VERSION, L"kept");
    EXPECT_EQ(settings.BITSTORED, 77);
    EXPECT_EQ(settings.LITTLEENDIAN, 0);
}

TEST_P(EmptySectionTest, GivesAStageTheDefaults) {
    WriteProfile(GetParam().text);
    const CommonSettings settings = ReadStageSettings(ProfilePath(), L"General");
    EXPECT_EQ(settings.BITSTORED, 12);
    EXPECT_EQ(settings.OUTPUTRANGE, 4095);
    EXPECT_EQ(settings.INVERSE_LOGRATIO, 0.2);
    EXPECT_EQ(settings.WRITE_PATH, L"");
}

TEST_F(CommonSettingsTest, MissingFileGivesAStageTheDefaults) {
    EXPECT_EQ(ReadStageSettings(ProfilePath(), L"General").OUTPUTRANGE, 4095);
}

TEST_F(CommonSettingsTest, StageReadsTheKeysOfItsSection) {
    WriteProfile("[General]\r\nOUTPUTRANGE=1000\r\n");
    const CommonSettings settings = ReadStageSettings(ProfilePath(), L"General");
    EXPECT_EQ(settings.OUTPUTRANGE, 1000);
    EXPECT_EQ(settings.SATURATION_VALUE, 4095);
}

INSTANTIATE_TEST_SUITE_P(Sections, EmptySectionTest,
                         testing::Values(EmptySectionCase{"EmptyFile", ""},
                                         EmptySectionCase{"NoSuchSection", "[Other]\r\nBITSTORED=9\r\n"},
                                         EmptySectionCase{"HeadOnly", "[General]\r\n"},
                                         EmptySectionCase{"BlankLines", "[General]\r\n\r\n  \r\n"},
                                         EmptySectionCase{"HeadThenHead", "[General]\r\n[Next]\r\nA=1\r\n"}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(CommonSettings, RecordOfAnEmptySectionIsAllZero) {
    const CommonSettings settings;
    EXPECT_EQ(settings.BITALLOCATED, 0);
    EXPECT_EQ(settings.BITSTORED, 0);
    EXPECT_EQ(settings.LITTLEENDIAN, 0);
    EXPECT_EQ(settings.SATURATION_VALUE, 0);
    EXPECT_EQ(settings.OUTPUTRANGE, 0);
    EXPECT_EQ(settings.SETCLIPBIN, 0.0);
    EXPECT_EQ(settings.INTRAORAL_MASK, 0);
    EXPECT_EQ(settings.INVERSE_INTENSITY, 0);
    EXPECT_EQ(settings.INVERSE_LOGRATIO, 0.0);
    EXPECT_EQ(settings.VERSION, L"");
}

struct BitsCase {
    const char* name;
    int32_t bits;
    int32_t maxValue;
};

class MaxValueOfBitsTest : public testing::TestWithParam<BitsCase> {};

TEST_P(MaxValueOfBitsTest, IsTheLargestNumberOfSoManyBits) {
    EXPECT_EQ(MaxValueOfBits(GetParam().bits), GetParam().maxValue);
}

INSTANTIATE_TEST_SUITE_P(Bits, MaxValueOfBitsTest,
                         testing::Values(BitsCase{"None", 0, 0}, BitsCase{"One", 1, 1},
                                         BitsCase{"Eight", 8, 255}, BitsCase{"Twelve", 12, 4095},
                                         BitsCase{"Sixteen", 16, 65535}, BitsCase{"Seventeen", 17, 131071},
                                         BitsCase{"ThirtyOne", 31, 2147483647},
                                         BitsCase{"ThirtyTwoCountsAsThirtyOne", 32, 2147483647},
                                         BitsCase{"FortyCountsAsThirtyOne", 40, 2147483647},
                                         BitsCase{"NegativeCountsAsNone", -5, 0},
                                         BitsCase{"Smallest", INT32_MIN, 0},
                                         BitsCase{"Largest", INT32_MAX, 2147483647}),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace vastrelline
