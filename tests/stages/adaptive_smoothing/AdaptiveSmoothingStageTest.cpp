// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "stages/adaptive_smoothing/AdaptiveSmoothingStage.h"
#include "stages/adaptive_smoothing/DeviationSmooth.h"
#include "stages/adaptive_smoothing/SavgolSmooth.h"
#include "support/ConfiguredRun.h"
#include "support/FixedRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

// What three taps of degree 0 make of it: 0.0176684, 0.9646632, 0.0176684 of 4000.
const Frame kBrightMiddle = FromRows({{0, 0, 4000, 0, 0}});
const Frame kBrightMiddleSmoothed = FromRows({{0, 70, 3858, 70, 0}});

Frame Savgol(Frame frame, int32_t mask, int32_t order) {
    SavgolSmooth(frame.Data(), frame.width, frame.height, kTwelveBits, mask, order);
    return frame;
}

class AdaptiveSmoothingStageTest : public testing::Test {
protected:
    // Runs the stage at position 2.
    Frame Run(Frame frame, std::string_view keys) {
        run_.WriteProfile("[Molar]\r\nCAPTION=x\r\n" + std::string(keys));
        RunAdaptiveSmoothingStage(frame.Data(), frame.width, frame.height, kTwelveBits, run_.Log(), 2);
        return frame;
    }

    ConfiguredRun run_;
};

TEST_F(AdaptiveSmoothingStageTest, SavgolTakesMaskAndOrderFromItsKeys) {
    EXPECT_THAT(Run(kBrightMiddle, "02_ADAPTIVESMOOTHING_MASK=3\r\n02_ADAPTIVESMOOTHING_ORDER=0\r\n"),
                EqualsFrame(kBrightMiddleSmoothed));
}

TEST_F(AdaptiveSmoothingStageTest, MissingKeysMeanFifteenTapsOfDegreeFour) {
    const Frame frame = Noise(40, 31, kTwelveBits, 4);
    EXPECT_THAT(Run(frame, ""), EqualsFrame(Savgol(frame, 15, 4)));
}

TEST_F(AdaptiveSmoothingStageTest, SavgolMaskIsTruncated) {
    const Frame frame = Noise(40, 31, kTwelveBits, 4);
    EXPECT_THAT(Run(frame, "02_ADAPTIVESMOOTHING_MASK=15.9\r\n"), EqualsFrame(Savgol(frame, 15, 4)));
    EXPECT_THAT(Run(frame, "02_ADAPTIVESMOOTHING_MASK=1.99\r\n"), EqualsFrame(frame));
}

TEST_F(AdaptiveSmoothingStageTest, ModeOneSmoothsByDeviationWithTheMaskAsSigma) {
    const Frame frame = Noise(40, 31, kTwelveBits, 4);
    Frame expected = frame;
    DeviationWeightedSmooth(expected.Data(), 40, 31, kTwelveBits, 1.75, -20);
    EXPECT_THAT(Run(frame,
                    "02_ADAPTIVESMOOTHING_Mode=1\r\n02_ADAPTIVESMOOTHING_MASK=1.75\r\n"
                    "02_ADAPTIVESMOOTHING_ORDER=-20\r\n"),
                EqualsFrame(expected));
}

TEST_F(AdaptiveSmoothingStageTest, OtherModesLeaveTheFrameAndStillDumpAndLogAsSavgol) {
    SharedConfiguredState().SaveLog = 1;
    SharedConfiguredState().SaveImage = 1;
    const Frame frame = FromRows({{1, 2}, {300, 4095}});
    EXPECT_THAT(Run(frame, "02_ADAPTIVESMOOTHING_Mode=2\r\n"), EqualsFrame(frame));
    EXPECT_THAT(Run(frame, "02_ADAPTIVESMOOTHING_Mode=-1\r\n"), EqualsFrame(frame));
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: AdapSmooth - Savgol ( S.SSS sec )\r\n"
              "\t\t\t MaskSize : 15.000\r\n"
              "\t\t\t Order    : 4\r\n"
              "\t\t\t Order    : 2\r\n"
              "#### hh:mm:ss \t: AdapSmooth - Savgol ( S.SSS sec )\r\n"
              "\t\t\t MaskSize : 15.000\r\n"
              "\t\t\t Order    : 4\r\n"
              "\t\t\t Order    : -1\r\n");
    EXPECT_EQ(run_.DumpedNames(), (std::vector<std::string>{"05_savgolproc.raw", "06_savgolproc.raw"}));
    EXPECT_EQ(run_.Dumped("06_savgolproc.raw"), std::string("\x01\0\x02\0\x2C\x01\xFF\x0F", 8));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 7);
}

TEST_F(AdaptiveSmoothingStageTest, LogNamesTheDeviationMethodAndDumpKeepsItsName) {
    SharedConfiguredState().SaveLog = 1;
    SharedConfiguredState().SaveImage = 1;
    Run(Flat(5, 1, 0),
        "02_ADAPTIVESMOOTHING_Mode=1\r\n02_ADAPTIVESMOOTHING_MASK=2.0006\r\n"
        "02_ADAPTIVESMOOTHING_ORDER=10\r\n");
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: AdapSmooth - SEP ( S.SSS sec )\r\n"
              "\t\t\t MaskSize : 2.001\r\n"
              "\t\t\t Order    : 10\r\n"
              "\t\t\t Order    : 1\r\n");
    EXPECT_EQ(run_.DumpedNames(), std::vector<std::string>{"05_savgolproc.raw"});
}

TEST_F(AdaptiveSmoothingStageTest, DumpHoldsTheSmoothedFrame) {
    SharedConfiguredState().SaveImage = 1;
    Run(kBrightMiddle, "02_ADAPTIVESMOOTHING_MASK=3.5\r\n02_ADAPTIVESMOOTHING_ORDER=0\r\n");
    // 70 is 0x0046 and 3858 is 0x0F12.
    EXPECT_EQ(run_.Dumped("05_savgolproc.raw"), std::string("\0\0\x46\0\x12\x0F\x46\0\0\0", 10));
}

TEST_F(AdaptiveSmoothingStageTest, LeavesNoTraceWithItsSwitchesOff) {
    Run(kBrightMiddle, "SAVE_IMAGE=1\r\nSAVE_LOG=1\r\n");
    EXPECT_EQ(run_.LogText(), "");
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
}

TEST_F(AdaptiveSmoothingStageTest, HostileSavgolMasksLeaveTheFrame) {
    const Frame frame = Noise(9, 8, kTwelveBits, 4);
    for (const char* mask : {"nan", "inf", "1e308", "-1e308", "2147483647", "-2147483648", "0", "", "x"}) {
        EXPECT_THAT(Run(frame, "02_ADAPTIVESMOOTHING_MASK=" + std::string(mask) + "\r\n"), EqualsFrame(frame))
            << mask;
    }
}

TEST(AdaptiveSmoothing, FixedChainSmoothsDumpsAndLogs) {
    FixedRun run;
    run.settings.ADAPTIVESMOOTHING_MASK = 3;
    run.settings.ADAPTIVESMOOTHING_ORDER = 0;
    run.settings.SAVE_LOG = 1;
    SharedFixedState().SaveImage = 1;
    Frame frame = kBrightMiddle;
    RunAdaptiveSmoothing(frame.Data(), 5, 1, kTwelveBits, run.dumpCounter, run.Log(), run.settings);
    EXPECT_THAT(frame, EqualsFrame(kBrightMiddleSmoothed));
    EXPECT_EQ(MaskTimes(run.LogText()),
              "#### hh:mm:ss \t: AdaptiveSmoothing ( N ms )\r\n"
              "\t\t\t MaskSize : 3\r\n"
              "\t\t\t Order    : 0\r\n");
    EXPECT_EQ(run.DumpedNames(), std::vector<std::string>{"05_adaptivesmooting.raw"});  // sic
    EXPECT_EQ(run.Dumped("05_adaptivesmooting.raw"), std::string("\0\0\x46\0\x12\x0F\x46\0\0\0", 10));
    EXPECT_EQ(run.dumpCounter, 6);
}

TEST(AdaptiveSmoothing, FixedChainDefaultsAreFifteenTapsOfDegreeFourWithoutTrace) {
    FixedRun run;
    Frame frame = Noise(40, 31, kTwelveBits, 4);
    const Frame expected = Savgol(frame, 15, 4);
    RunAdaptiveSmoothing(frame.Data(), 40, 31, kTwelveBits, run.dumpCounter, run.Log(), run.settings);
    EXPECT_THAT(frame, EqualsFrame(expected));
    EXPECT_EQ(run.LogText(), "");
    EXPECT_TRUE(run.DumpedNames().empty());
    EXPECT_EQ(run.dumpCounter, 5);
}

}  // namespace
}  // namespace vastrelline
