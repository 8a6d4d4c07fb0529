// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <regex>
#include <string>
#include <vector>

#include "chains/ConfiguredChain.h"
#include "chains/LowExposureChain.h"
#include "config/CallProfile.h"
#include "config/ConfiguredState.h"
#include "config/DoseRecord.h"
#include "support/BackupNames.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MadeFrame.h"
#include "support/ProfileFolder.h"
#include "support/StageNames.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A frame of `low` pixels of level 50, `object` of 120, one of 200 and as many of 3000 as fill `width` by 5.
// Whatever these numbers, the best threshold divides 200 from 3000; the lowest such level is 200, and the
// object lies below it.
Frame MakeExposure(int32_t width, int32_t low, int32_t object) {
    Frame frame = Flat(width, 5, 3000);
    size_t i = 0;
    for (int32_t k = 0; k < low; ++k) frame.pixels.at(i++) = 50;
    for (int32_t k = 0; k < object; ++k) frame.pixels.at(i++) = 120;
    frame.pixels.at(i) = 200;
    return frame;
}

class LowExposureChainTest : public testing::Test {
protected:
    LowExposureChainTest() : stateBefore_(SharedConfiguredState()), recordBefore_(SharedDoseRecord()) {}
    ~LowExposureChainTest() override {
        SharedConfiguredState() = stateBefore_;
        SetSharedDoseRecord(recordBefore_);
    }

    // A section of three stages, with the log on.
    static ProfileWriter Profile(const std::string& clipBin) {
        ProfileWriter writer = ProfileFolder::PlainSection();
        writer.Key("SAVE_LOG", "1").Key("SETCLIPBIN", clipBin);
        writer.Stage("10", {{"POST_GAMMA_RATIO", "1"}}).Stage("13").Stage("8");
        return writer;
    }
    void Write(ProfileWriter writer) const { writer.WriteTo(folder_.At("profile.ini")); }

    Frame Run(const Frame& input) const {
        const CallProfile profile(folder_.WideProfile());
        Frame output = Flat(input.width, input.height, 7);
        EXPECT_EQ(RunLowExposureChain({input.Data(), output.Data(), input.width, input.height,
                                       folder_.WideProfile(), L"General"},
                                      nullptr),
                  kSuccess);
        return output;
    }
    const ProfileFolder& Folder() const { return folder_; }

private:
    ConfiguredState stateBefore_;
    DoseRecord recordBefore_;
    ProfileFolder folder_;
};

// Six of the nine object pixels are dark: 0.667. From level 5 up six pixels lie at 50, more than half of
// nine.
TEST_F(LowExposureChainTest, DarkObjectIsLow) {
    Write(Profile("0.66"));
    Run(MakeExposure(4, 6, 3));
    const DoseRecord record = SharedDoseRecord();
    EXPECT_EQ(record.ObjectTotal, 9);
    EXPECT_EQ(record.LowSignal, 6);
    EXPECT_DOUBLE_EQ(record.LowRatio, 6.0 / 9.0);
    EXPECT_EQ(record.ObjectMedian, 50);
    EXPECT_EQ(record.LowExposure, 1);
    EXPECT_THAT(StageNamesIn(Folder().Log()),
                ElementsAre("Gaussian", "StretchCurve", "CLAHE", "CLAHE", "Linear Curve", "Gamma Curve"));
}

TEST_F(LowExposureChainTest, SameFrameBelowTheThresholdIsNormal) {
    Write(Profile("0.67"));
    Run(MakeExposure(4, 6, 3));
    EXPECT_EQ(SharedDoseRecord().LowExposure, 0);
    EXPECT_EQ(SharedDoseRecord().ObjectTotal, 9);
    EXPECT_THAT(StageNamesIn(Folder().Log()), ElementsAre("Gamma Curve", "HDR", "Gaussian"));
}

TEST_F(LowExposureChainTest, ExactTieIsNormal) {
    Write(Profile("0.5"));
    Run(MakeExposure(4, 4, 4));
    EXPECT_EQ(SharedDoseRecord().LowRatio, 0.5);
    EXPECT_EQ(SharedDoseRecord().LowExposure, 0);
    // Four of eight are no more than half of them, eight are.
    EXPECT_EQ(SharedDoseRecord().ObjectMedian, 120);
    EXPECT_THAT(StageNamesIn(Folder().Log()), ElementsAre("Gamma Curve", "HDR", "Gaussian"));
}

TEST_F(LowExposureChainTest, ThresholdOfOneIsNeverPassed) {
    Write(Profile("1.0"));
    Run(MakeExposure(4, 9, 0));
    EXPECT_EQ(SharedDoseRecord().LowRatio, 1.0);
    EXPECT_EQ(SharedDoseRecord().LowExposure, 0);
}

// A frame of one level has the threshold 0 and no object: 0 / 0.
TEST_F(LowExposureChainTest, FrameWithoutAnObjectIsNormal) {
    Write(Profile("-1"));
    Run(Flat(4, 5, 3000));
    EXPECT_TRUE(SharedDoseRecord().LowRatio != SharedDoseRecord().LowRatio);
    EXPECT_EQ(SharedDoseRecord().LowExposure, 0);
    EXPECT_EQ(SharedDoseRecord().ObjectMedian, 0);
}

// Levels below 5 count for the half, which stays when no level above passes it: a number of pixels.
TEST_F(LowExposureChainTest, MedianMayStayAPixelCount) {
    Write(Profile("0.5"));
    Frame frame = Flat(4, 5, 3000);
    for (size_t i = 0; i < 9; ++i) frame.pixels[i] = 2;
    frame.pixels[9] = 200;
    Run(frame);
    EXPECT_EQ(SharedDoseRecord().ObjectTotal, 9);
    EXPECT_EQ(SharedDoseRecord().ObjectMedian, 4);
}

TEST_F(LowExposureChainTest, LowSequenceTakesItsKeysByPositionFromItsOwnSection) {
    ProfileWriter writer = Profile("0.5");
    writer.Section("IP_LOWMODE")
        .Key("00_GAUSSIAN_SIZE", "0.5")
        .Key("00_GAUSSIAN_REPEAT", "2")
        .Key("02_STRETCH_SEPARATION_CNT", "9")
        .Key("02_RESTRETCH_OPTION", "0")
        .Key("03_BLOCK_SIZE", "2")
        .Key("03_MAX_SLOPE", "1.25")
        .Key("04_BLOCK_SIZE", "3")
        .Key("04_HISTO_BINS", "128")
        .Key("05_POST_LINEAR_LIMITBIN", "4")
        .Key("06_POST_GAMMA_RATIO", "1.5");
    Write(writer);
    Run(MakeExposure(4, 6, 3));
    const std::string log = Folder().Log();
    EXPECT_THAT(log, HasSubstr("\t\t\t MaskSize   : 0.50\r\n\t\t\t RepaetCnt  : 2\r\n"));
    EXPECT_THAT(log, HasSubstr("\t\t\t SeparateMode   : 9\r\n"));
    EXPECT_THAT(log, HasSubstr("\t\t\t BlockSize       : 2\r\n\t\t\t HistogramBins   : 256\r\n"
                               "\t\t\t CurveRatio      : 1.25\r\n"));
    EXPECT_THAT(log, HasSubstr("\t\t\t BlockSize       : 3\r\n\t\t\t HistogramBins   : 128\r\n"
                               "\t\t\t CurveRatio      : 1.50\r\n"));
    EXPECT_THAT(log, HasSubstr("\t\t\t LimitBin    : 4\r\n"));
    EXPECT_THAT(log, HasSubstr("\t\t\t Gamma : 1.50\r\n"));
    // The head was written before the decision.
    EXPECT_THAT(log, HasSubstr("\t\t\t Section Name [General]\r\n"));
    EXPECT_EQ(SharedConfiguredState().SectionName, L"IP_LOWMODE");
}

// Missing, without a line, or without a key that any stage knows: one and the same picture.
TEST_F(LowExposureChainTest, MissingOrEmptyLowSectionMeansTheDefaults) {
    const Frame input = MadeRadiograph(180, 150);
    Write(Profile("-1"));  // the darkness of every frame passes it
    const Frame missing = Run(input);
    EXPECT_THAT(Folder().Log(), HasSubstr("\t\t\t BlockSize       : 64\r\n"));
    // The last curve spreads what is there over all of the output range.
    EXPECT_EQ(*std::min_element(missing.pixels.begin(), missing.pixels.end()), 0);
    EXPECT_EQ(*std::max_element(missing.pixels.begin(), missing.pixels.end()), 4095);
    for (const bool hasKey : {false, true}) {
        ProfileWriter writer = Profile("-1");
        writer.Section("IP_LOWMODE");
        if (hasKey) writer.Key("CAPTION", "x");
        Write(writer);
        EXPECT_THAT(Run(input), EqualsFrame(missing)) << hasKey;
    }
}

TEST_F(LowExposureChainTest, LowRunDumpsEveryStageButTheLinearCurve) {
    ProfileWriter writer = ProfileFolder::PlainSection();
    writer.Key("SAVE_IMAGE", "1").Key("WRITE_PATH", Folder().Narrow("") + "\\").Key("SETCLIPBIN", "0.5");
    Write(writer);
    const std::vector<std::string> expected = {
        ComingDump(0, "originalimage.raw"), ComingDump(1, "pregaussian.raw"),
        ComingDump(2, "preprocessing.raw"), ComingDump(3, "stretchimage0.raw"),
        ComingDump(4, "stretchimage2.raw"), ComingDump(5, "clahe.raw"),
        ComingDump(6, "clahe.raw"),         ComingDump(7, "result_gamma.raw"),
        ComingDump(8, "result.raw"),
    };
    Run(MakeExposure(4, 6, 3));
    std::vector<std::string> dumps = Folder().Files();
    std::erase_if(dumps, [](const std::string& name) { return !name.ends_with(".raw"); });
    EXPECT_THAT(dumps, testing::UnorderedElementsAreArray(expected));
}

TEST_F(LowExposureChainTest, LogEndsWithALineEndMore) {
    Write(Profile("1"));
    Run(MakeExposure(4, 6, 3));
    const std::string log = Folder().Log();
    const size_t end = log.find("End Post-Processing");
    ASSERT_NE(end, std::string::npos);
    static const std::regex form("End Post-Processing \\( [0-9]+\\.[0-9]{3} sec \\)\r\n\r\n=+\r\n");
    EXPECT_TRUE(std::regex_match(log.substr(end), form)) << log;
}

TEST_F(LowExposureChainTest, BackupOfALowRunIsNamedAfterTheLowSection) {
    for (const auto& [clipBin, name] :
         {std::pair{"0.5", "T_KeepIP_LOWMODE.bmp"}, {"1", "T_KeepGeneral.bmp"}}) {
        ProfileWriter writer = ProfileFolder::PlainSection();
        writer.Key("SAVE_BACKUP", "1").Key("SAVE_BACKUPPATH", Folder().Narrow("Keep"));
        Write(writer.Key("SETCLIPBIN", clipBin));
        std::filesystem::remove_all(Folder().At("Keep"));
        Run(MakeExposure(4, 6, 3));
        EXPECT_THAT(MaskedNames(Folder().At("Keep")), ElementsAre(name, "T_keepcalibrated.raw"));
    }
}

TEST_F(LowExposureChainTest, DecisionIsShownOnlyIfAsked) {
    Write(Profile("0.5"));
    Run(MakeExposure(4, 6, 3));
    EXPECT_EQ(ShownMessages::Count(), 0U);
    Write(Profile("0.5").Key("MSGBOX_ENABLE", "1"));
    Run(MakeExposure(4, 6, 3));
    EXPECT_TRUE(
        ShownMessages::AreOnly(L"[Low Exposure Image] \nObject median value: 50 \n\n\n"
                               L"Low signal histogram: 6 \nTotal object histogram: 9 \nLow_Thd: 0.667",
                               MessageIcon::None));
    ShownMessages::Take();
    Write(Profile("0.7").Key("MSGBOX_ENABLE", "-1"));
    Run(MakeExposure(4, 6, 3));
    EXPECT_TRUE(
        ShownMessages::AreOnly(L"[Normal Exposure Image] \nObject median value: 50 \n\n\n"
                               L"Low signal histogram: 6 \nTotal object histogram: 9 \nLow_Thd: 0.667",
                               MessageIcon::None));
    ShownMessages::Take();
    Run(Flat(4, 5, 3000));
    const std::vector<ShownMessages::Message> shown = ShownMessages::Take();
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_THAT(shown[0].text, testing::EndsWith(L" -nan"));
}

// The cap would bring every pixel to 0, and with it the figures.
TEST_F(LowExposureChainTest, DecisionComesBeforeAnythingElse) {
    Write(Profile("0.5").Key("SATURATION_VALUE", "0").Key("INVERSE_INTENSITY", "1"));
    Run(MakeExposure(4, 6, 3));
    EXPECT_EQ(SharedDoseRecord().ObjectTotal, 9);
    EXPECT_EQ(SharedDoseRecord().LowExposure, 1);
}

TEST_F(LowExposureChainTest, OtherDriversLeaveTheRecordAlone) {
    Write(Profile("0.5"));
    const Frame frame = MakeExposure(4, 6, 3);
    Run(frame);
    Frame output = Flat(4, 5, 7);
    const Frame other = Flat(4, 5, 10);
    EXPECT_EQ(
        RunConfiguredChain({other.Data(), output.Data(), 4, 5, Folder().WideProfile(), L"General"}, nullptr),
        kSuccess);
    EXPECT_EQ(SharedDoseRecord().ObjectTotal, 9);
    EXPECT_EQ(SharedConfiguredState().SectionName, L"General");
}

TEST_F(LowExposureChainTest, ArgumentTestsAreThoseOfTheConfiguredChain) {
    Write(Profile("0.5"));
    Frame frame = Flat(1, 1, 5);
    const std::wstring profile = Folder().WideProfile();
    uint16_t* pixels = frame.Data();
    EXPECT_EQ(RunLowExposureChain({nullptr, nullptr, 1, 1, profile + L"x", L""}, nullptr), kNoProfile);
    EXPECT_EQ(RunLowExposureChain({nullptr, nullptr, 1, 1, profile, L""}, nullptr), kNoInput);
    EXPECT_EQ(RunLowExposureChain({pixels, nullptr, 1, 1, profile, L""}, nullptr), kNoOutput);
    EXPECT_EQ(RunLowExposureChain({pixels, pixels, 1, 1, profile, L""}, nullptr), kNoSection);
    EXPECT_EQ(RunLowExposureChain({pixels, pixels, 0, 1, profile, L"General"}, nullptr), kSuccess);
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

TEST_F(LowExposureChainTest, BitsBeyondEveryPixelDecideLikeSixteen) {
    for (const char* bits : {"16", "17", "24", "31", "2147483647"}) {
        ProfileWriter writer = ProfileFolder::SettledProfile();
        writer.Section("General").Key("BITSTORED", bits).Key("SETCLIPBIN", "0.66").Key("INTRAORAL_MASK", "0");
        Write(writer);
        SetSharedDoseRecord({});
        Run(MakeExposure(4, 6, 3));
        EXPECT_EQ(SharedDoseRecord().ObjectTotal, 9) << bits;
        EXPECT_EQ(SharedDoseRecord().LowExposure, 1) << bits;
    }
}

}  // namespace
}  // namespace vastrelline
