// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "stages/pre_contrast/PreContrastStage.h"
#include "support/ConfiguredRun.h"
#include "support/FixedRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

// Sigma 1 smooths it to 2798, 1201, 233, 17; half of the difference is added to that.
const Frame kBrightLeft = FromRows({{4000, 0, 0, 0, 0, 0, 0, 0}});
const Frame kHalfWay = FromRows({{3399, 600, 116, 8, 0, 0, 0, 0}});
constexpr std::string_view kHalfWayKeys =
    "07_PRECONTRAST_MASK=1\r\n07_PRECONTRAST_RATIO=0.5\r\n07_PRECONTRAST_RESCALE=1\r\n";

// 2798 is 0x0AEE, 1201 is 0x04B1, 233 is 0x00E9 and 17 is 0x0011; 3399 is 0x0D47, 600 is 0x0258, 116 is 0x74.
const std::string kSmoothedDump("\xEE\x0A\xB1\x04\xE9\0\x11\0\0\0\0\0\0\0\0\0", 16);
const std::string kHalfWayDump("\x47\x0D\x58\x02\x74\0\x08\0\0\0\0\0\0\0\0\0", 16);

class PreContrastStageTest : public testing::Test {
protected:
    // Runs the stage at position 7.
    Frame Run(Frame frame, std::string_view keys) {
        run_.WriteProfile("[Molar]\r\n" + std::string(keys));
        PreContrastStage(frame.Data(), frame.width, frame.height, frame.width * frame.height, kTwelveBits,
                         run_.Log(), 7);
        return frame;
    }

    ConfiguredRun run_;
};

TEST_F(PreContrastStageTest, ReadsTheKeysOfItsPosition) {
    EXPECT_THAT(
        Run(kBrightLeft, std::string(kHalfWayKeys) + "PRECONTRAST_MASK=9\r\n06_PRECONTRAST_RATIO=9\r\n"
                                                     "08_PRECONTRAST_RESCALE=9\r\n"),
        EqualsFrame(kHalfWay));
}

TEST_F(PreContrastStageTest, EachKeyHasItsOwnDefault) {
    const Frame frame = Noise(24, 18, kTwelveBits, 4);
    const Frame expected =
        Run(frame, "07_PRECONTRAST_MASK=15\r\n07_PRECONTRAST_RATIO=1.25\r\n07_PRECONTRAST_RESCALE=2\r\n");
    EXPECT_FALSE(expected == frame);
    EXPECT_THAT(Run(frame, "CAPTION=x\r\n"), EqualsFrame(expected));
    EXPECT_THAT(Run(frame, "07_PRECONTRAST_MASK=15\r\n"), EqualsFrame(expected));
    EXPECT_THAT(Run(frame, "07_PRECONTRAST_RATIO=1.25\r\n"), EqualsFrame(expected));
    EXPECT_THAT(Run(frame, "07_PRECONTRAST_RESCALE=2\r\n"), EqualsFrame(expected));
}

TEST_F(PreContrastStageTest, DumpsSmoothedFrameAndResultUnderOneNumber) {
    SharedConfiguredState().SaveImage = 1;
    Run(kBrightLeft, kHalfWayKeys);
    EXPECT_EQ(run_.DumpedNames(),
              (std::vector<std::string>{"05_precontrast.raw", "05_precontrastgaussian.raw"}));
    EXPECT_EQ(run_.Dumped("05_precontrastgaussian.raw"), kSmoothedDump);
    EXPECT_EQ(run_.Dumped("05_precontrast.raw"), kHalfWayDump);
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
}

TEST_F(PreContrastStageTest, LogsTimeAndKeysWithTheTruncatedFactor) {
    SharedConfiguredState().SaveLog = 1;
    Run(kBrightLeft, "CAPTION=x\r\n");
    Run(kBrightLeft,
        "07_PRECONTRAST_MASK=2.346\r\n07_PRECONTRAST_RATIO=-1\r\n07_PRECONTRAST_RESCALE=1.9\r\n");
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: PreConstrast ( S.SSS sec )\r\n"
              "\t\t\t MaskSize       : 15.00\r\n"
              "\t\t\t CurveRatio     : 1.25\r\n"
              "\t\t\t Rescale        : 2\r\n"
              "#### hh:mm:ss \t: PreConstrast ( S.SSS sec )\r\n"
              "\t\t\t MaskSize       : 2.35\r\n"
              "\t\t\t CurveRatio     : -1.00\r\n"
              "\t\t\t Rescale        : 1\r\n");
}

TEST_F(PreContrastStageTest, MaskOfZeroSkipsTheStageWithoutATrace) {
    SharedConfiguredState().SaveLog = 1;
    SharedConfiguredState().SaveImage = 1;
    EXPECT_THAT(Run(kBrightLeft, "07_PRECONTRAST_MASK=0.0\r\n"), EqualsFrame(kBrightLeft));
    EXPECT_THAT(Run(kBrightLeft, "07_PRECONTRAST_MASK=none\r\n"), EqualsFrame(kBrightLeft));
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
    EXPECT_EQ(run_.LogText(), "");
}

TEST_F(PreContrastStageTest, LeavesNoTraceWithItsSwitchesOff) {
    Run(kBrightLeft, "SAVE_IMAGE=1\r\nSAVE_LOG=1\r\n");
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
    EXPECT_EQ(run_.LogText(), "");
}

class PreContrastStageFixedTest : public testing::Test {
protected:
    Frame Run(Frame frame) {
        PreContrastStageFixed(frame.Data(), frame.width, frame.height, frame.width * frame.height,
                              kTwelveBits, run_.dumpCounter, run_.Log(), run_.settings);
        return frame;
    }

    void Set(double mask, double ratio, double rescale) {
        run_.settings.PRECONTRAST_MASK = mask;
        run_.settings.PRECONTRAST_RATIO = ratio;
        run_.settings.PRECONTRAST_RESCALE = rescale;
    }

    FixedRun run_;
};

TEST_F(PreContrastStageFixedTest, DumpsSmoothedFrameAndResultUnderOneNumberAndLogsMilliseconds) {
    SharedFixedState().SaveImage = 1;
    run_.settings.SAVE_LOG = 1;
    Set(1.0, 0.5, 1.0);
    EXPECT_THAT(Run(kBrightLeft), EqualsFrame(kHalfWay));
    EXPECT_EQ(run_.DumpedNames(),
              (std::vector<std::string>{"05_precontrast.raw", "05_precontrastgaussian.raw"}));
    EXPECT_EQ(run_.Dumped("05_precontrastgaussian.raw"), kSmoothedDump);
    EXPECT_EQ(run_.Dumped("05_precontrast.raw"), kHalfWayDump);
    EXPECT_EQ(run_.dumpCounter, 6);
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: PreConstrast ( N ms )\r\n"
              "\t\t\t MaskSize       : 1.00\r\n"
              "\t\t\t CurveRatio     : 0.50\r\n"
              "\t\t\t Rescale        : 1\r\n");
}

// 400, 250, 50, 0, 0, 50, 250 by the fixed kernel around the edges.
TEST_F(PreContrastStageFixedTest, MaskOfZeroRunsTheFixedKernel) {
    SharedFixedState().SaveImage = 1;
    Set(0.0, 0.5, 1.0);
    EXPECT_THAT(Run(FromRows({{1000, 0, 0, 0, 0, 0, 0}})),
                EqualsFrame(FromRows({{700, 125, 25, 0, 0, 25, 125}})));
    EXPECT_EQ(run_.dumpCounter, 6);
}

TEST_F(PreContrastStageFixedTest, LeavesNoTraceWithItsSwitchesOff) {
    run_.settings.SAVE_IMAGE = 1;  // the run's state decides on dumps, not the record
    Run(kBrightLeft);
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(run_.dumpCounter, 5);
    EXPECT_EQ(run_.LogText(), "");
}

}  // namespace
}  // namespace vastrelline
