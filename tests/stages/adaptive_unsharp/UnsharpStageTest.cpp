// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "stages/adaptive_unsharp/ActivityWeightedUnsharp.h"
#include "stages/adaptive_unsharp/EdgeWeightedUnsharp.h"
#include "stages/adaptive_unsharp/HistogramShapedUnsharp.h"
#include "stages/adaptive_unsharp/UnsharpStage.h"
#include "support/ConfiguredRun.h"
#include "support/FixedRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"

namespace vastrelline {
namespace {

constexpr int32_t kMaxValue = 4000;  // below some of the pixels

Frame MakeFrame() { return Noise(37, 29, 4095, 20240517); }

Frame Limited(Frame frame) {
    for (uint16_t& pixel : frame.pixels) pixel = std::min<uint16_t>(pixel, kMaxValue);
    return frame;
}

// The pixels of a small frame as a raw dump holds them.
std::string BytesOf(const Frame& frame) {
    std::string bytes;
    for (const uint16_t pixel : frame.pixels) {
        bytes.push_back(static_cast<char>(pixel & 0xFF));
        bytes.push_back(static_cast<char>(pixel >> 8));
    }
    return bytes;
}

class UnsharpStageTest : public testing::Test {
protected:
    // Runs the stage at position 7 of a section "Molar" with these lines.
    Frame RunStage(Frame frame, const std::string& lines) {
        run_.WriteProfile("[Molar]\r\n" + lines);
        AdaptiveUnsharpStage(frame.Data(), frame.width, frame.height, kMaxValue, run_.Log(), 7);
        return frame;
    }
    ConfiguredRun& Run() { return run_; }

private:
    ConfiguredRun run_;
};

TEST_F(UnsharpStageTest, ModesWithoutAMethodLeaveTheFrame) {
    for (const char* mode : {"", "0", "2", "6", "-1", "2147483647", "-2147483648"}) {
        EXPECT_THAT(RunStage(MakeFrame(), std::string("07_MODE_CONTRAST=") + mode), EqualsFrame(MakeFrame()))
            << mode;
    }
    EXPECT_THAT(RunStage(MakeFrame(), "06_MODE_CONTRAST=1\r\nMODE_CONTRAST=1"), EqualsFrame(MakeFrame()));
}

TEST_F(UnsharpStageTest, ModeOneTakesSigmaRatioNoiseAndReduce) {
    Frame expected = MakeFrame();
    EdgeWeightedUnsharp(expected.Data(), 37, 29, kMaxValue, 1.5, 2.5, 60, -1);
    EXPECT_THAT(RunStage(MakeFrame(),
                         "07_MODE_CONTRAST=1\r\n07_GAUSSIAN_SIZE_CONTRAST=1.5\r\n"
                         "07_ENAHCNED_RATIO_CONTRAST=2.5\r\n07_NOISE_WIDTH_CONTRAST=60\r\n"
                         "07_ReduceTimeRatio_CONTRAST=-1\r\n07_PROTECTOUTLINE_CONTRAST=9"),
                EqualsFrame(expected));
    expected = MakeFrame();
    EdgeWeightedUnsharp(expected.Data(), 37, 29, kMaxValue, 3.0, 2.0, 0, 1);
    EXPECT_THAT(RunStage(MakeFrame(), "07_MODE_CONTRAST=1"), EqualsFrame(expected));
}

TEST_F(UnsharpStageTest, ModeThreeRunsWithoutAMask) {
    Frame expected = MakeFrame();
    HistogramShapedUnsharp(expected.Data(), 37, 29, kMaxValue, 1.5, 2.5, 60, nullptr);
    EXPECT_THAT(RunStage(MakeFrame(),
                         "07_MODE_CONTRAST=3\r\n07_GAUSSIAN_SIZE_CONTRAST=1.5\r\n"
                         "07_ENAHCNED_RATIO_CONTRAST=2.5\r\n07_NOISE_WIDTH_CONTRAST=60"),
                EqualsFrame(expected));
}

TEST_F(UnsharpStageTest, ModeFourOnlyLimits) {
    EXPECT_THAT(RunStage(MakeFrame(), "07_MODE_CONTRAST=4\r\n07_ENAHCNED_RATIO_CONTRAST=9"),
                EqualsFrame(Limited(MakeFrame())));
}

TEST_F(UnsharpStageTest, ModeFiveReadsRadiiAndGains) {
    Frame expected = MakeFrame();
    ActivityWeightedUnsharp(expected.Data(), 37, 29, kMaxValue, 1, 2, 4, 1.5, 0.75);
    EXPECT_NE(expected, Limited(MakeFrame()));
    EXPECT_THAT(
        RunStage(MakeFrame(),
                 "07_MODE_CONTRAST=5\r\n07_NOISE_WIDTH_CONTRAST=1\r\n07_ReduceTimeRatio_CONTRAST=2\r\n"
                 "07_PROTECTOUTLINE_CONTRAST=4\r\n07_GAUSSIAN_SIZE_CONTRAST=1.5\r\n"
                 "07_ENAHCNED_RATIO_CONTRAST=0.75"),
        EqualsFrame(expected));
    EXPECT_THAT(RunStage(MakeFrame(), "07_MODE_CONTRAST=5"), EqualsFrame(Limited(MakeFrame())));
}

TEST_F(UnsharpStageTest, DumpsUnderNumberAndMode) {
    SharedConfiguredState().SaveImage = 1;
    const Frame frame = FromRows({{1, 4095}, {300, 0}});
    RunStage(frame, "");
    RunStage(frame, "07_MODE_CONTRAST=4");
    RunStage(frame, "07_MODE_CONTRAST=2");
    RunStage(frame, "07_MODE_CONTRAST=-3");
    EXPECT_EQ(Run().DumpedNames(), (std::vector<std::string>{"05_unsharp0.raw", "06_unsharp4.raw",
                                                             "07_unsharp2.raw", "08_unsharp-3.raw"}));
    EXPECT_EQ(Run().Dumped("07_unsharp2.raw"), BytesOf(frame));
    EXPECT_EQ(Run().Dumped("05_unsharp0.raw"), BytesOf(frame));
    EXPECT_EQ(Run().Dumped("06_unsharp4.raw"), BytesOf(Limited(frame)));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 9);
}

TEST_F(UnsharpStageTest, LogsTimeAndParameters) {
    SharedConfiguredState().SaveLog = 1;
    RunStage(FromRows({{1, 2}}), "");
    RunStage(FromRows({{1, 2}}),
             "07_MODE_CONTRAST=4\r\n07_GAUSSIAN_SIZE_CONTRAST=1.255\r\n07_ENAHCNED_RATIO_CONTRAST=-10\r\n"
             "07_NOISE_WIDTH_CONTRAST=-7");
    EXPECT_EQ(MaskTimes(Run().LogText()),
              "#### hh:mm:ss \t: AdaptiveUnsharp ( S.SSS sec  )\r\n"
              "\t\t\t Mode\t      : 0\r\n"
              "\t\t\t Sigma\t      : 3.00\r\n"
              "\t\t\t EnhanceRatio : 2.00\r\n"
              "\t\t\t NoiseWidth   : 0\r\n"
              "#### hh:mm:ss \t: AdaptiveUnsharp ( S.SSS sec  )\r\n"
              "\t\t\t Mode\t      : 4\r\n"
              "\t\t\t Sigma\t      : 1.25\r\n"  // 1.255 lies a little below itself
              "\t\t\t EnhanceRatio : -10.00\r\n"
              "\t\t\t NoiseWidth   : -7\r\n");
}

TEST_F(UnsharpStageTest, SwitchedOffItWritesNothing) {
    RunStage(MakeFrame(), "07_MODE_CONTRAST=1\r\nSAVE_IMAGE=1\r\nSAVE_LOG=1");
    EXPECT_EQ(Run().LogText(), "");
    EXPECT_TRUE(Run().DumpedNames().empty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
}

class UnsharpStageFixedTest : public testing::Test {
protected:
    Frame RunStage(Frame frame, int32_t mode, uint16_t* mask = nullptr) {
        run_.settings.MODE_CONTRAST = mode;
        AdaptiveUnsharpStageFixed(frame.Data(), mask, frame.width, frame.height, kMaxValue, run_.dumpCounter,
                                  run_.Log(), run_.settings);
        return frame;
    }
    FixedRun& Run() { return run_; }

private:
    FixedRun run_;
};

TEST_F(UnsharpStageFixedTest, ModesOneThreeAndFourRun) {
    Run().settings.GAUSSIAN_SIZE_CONTRAST = 1.5;
    Run().settings.ENAHCNED_RATIO_CONTRAST = 2.5;
    Run().settings.NOISE_WIDTH_CONTRAST = 60;
    Frame expected = MakeFrame();
    EdgeWeightedUnsharp(expected.Data(), 37, 29, kMaxValue, 1.5, 2.5, 60, 1);
    EXPECT_THAT(RunStage(MakeFrame(), 1), EqualsFrame(expected));
    expected = MakeFrame();
    HistogramShapedUnsharp(expected.Data(), 37, 29, kMaxValue, 1.5, 2.5, 60, nullptr);
    EXPECT_THAT(RunStage(MakeFrame(), 3), EqualsFrame(expected));
    EXPECT_THAT(RunStage(MakeFrame(), 4), EqualsFrame(Limited(MakeFrame())));
}

TEST_F(UnsharpStageFixedTest, ModeThreeTakesTheMask) {
    Frame mask = Flat(37, 29, 0);
    for (int32_t x = 0; x < 20; ++x) mask.At(x, 10) = 255;
    Frame usedMask = mask;
    Frame expected = MakeFrame();
    HistogramShapedUnsharp(expected.Data(), 37, 29, kMaxValue, 3.0, 2.0, 0, usedMask.Data());
    EXPECT_THAT(RunStage(MakeFrame(), 3, mask.Data()), EqualsFrame(expected));
    EXPECT_THAT(mask, EqualsFrame(usedMask));
    EXPECT_NE(expected, RunStage(MakeFrame(), 3));
}

TEST_F(UnsharpStageFixedTest, ModeFiveAndModesWithoutAMethodLeaveTheFrame) {
    Run().settings.NOISE_WIDTH_CONTRAST = 2;
    for (const int32_t mode : {5, 0, 2, -1, 6})
        EXPECT_THAT(RunStage(MakeFrame(), mode), EqualsFrame(MakeFrame()));
}

TEST_F(UnsharpStageFixedTest, DumpsAndLogs) {
    SharedFixedState().SaveImage = 1;
    Run().settings.SAVE_LOG = 1;
    const Frame frame = FromRows({{1, 4095}, {300, 0}});
    RunStage(frame, 5);
    RunStage(frame, 4);
    EXPECT_EQ(Run().DumpedNames(), (std::vector<std::string>{"05_unsharp5.raw", "06_unsharp4.raw"}));
    EXPECT_EQ(Run().Dumped("05_unsharp5.raw"), BytesOf(frame));
    EXPECT_EQ(Run().Dumped("06_unsharp4.raw"), BytesOf(Limited(frame)));
    EXPECT_EQ(Run().dumpCounter, 7);
    EXPECT_EQ(MaskTimes(Run().LogText()),
              "#### hh:mm:ss \t: AdaptiveUnsharp ( N ms )\r\n"
              "\t\t\t Mode\t      : 5\r\n"
              "\t\t\t Sigma\t      : 3.00\r\n"
              "\t\t\t EnhanceRatio : 2.00\r\n"
              "\t\t\t NoiseWidth   : 0\r\n"
              "#### hh:mm:ss \t: AdaptiveUnsharp ( N ms )\r\n"
              "\t\t\t Mode\t      : 4\r\n"
              "\t\t\t Sigma\t      : 3.00\r\n"
              "\t\t\t EnhanceRatio : 2.00\r\n"
              "\t\t\t NoiseWidth   : 0\r\n");
}

TEST_F(UnsharpStageFixedTest, SwitchedOffItWritesNothing) {
    RunStage(MakeFrame(), 1);
    EXPECT_EQ(Run().LogText(), "");
    EXPECT_TRUE(Run().DumpedNames().empty());
    EXPECT_EQ(Run().dumpCounter, 5);
}

}  // namespace
}  // namespace vastrelline
