// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "config/FixedState.h"
#include "stages/gamma/GammaStage.h"
#include "stages/sigmoid/SigmoidStage.h"
#include "support/FixedRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"

namespace vastrelline {
namespace {

class FixedToneStageTest : public testing::Test {
protected:
    Frame RunSigmoid(Frame frame, int32_t maxValue) {
        RunFixedSigmoid(frame.Data(), frame.width, frame.height, maxValue, run_.dumpCounter, run_.Log(),
                        run_.settings);
        return frame;
    }

    Frame RunGamma(Frame frame, int32_t maxValue) {
        RunFixedGamma(frame.Data(), frame.width, frame.height, maxValue, run_.dumpCounter, run_.Log(),
                      run_.settings);
        return frame;
    }

    void SwitchAllOn() {
        SharedFixedState().SaveImage = 1;
        run_.settings.SAVE_LOG = 1;
    }

    FixedRun run_;
};

using FixedSigmoidTest = FixedToneStageTest;

// Levels 0, 10, 20 and 30, each just often enough to count.
const Frame kFourLevels = Ramp(4, 11, 0, 10, 0);

std::vector<uint16_t> FirstRow(const Frame& frame) {
    return {frame.pixels.begin(), frame.pixels.begin() + frame.width};
}

TEST_F(FixedSigmoidTest, SwitchOnTakesTheSigmoid) {
    run_.settings.POST_SIGMOID_LUT = -1;
    run_.settings.OUTPUTRANGE = 1000;
    // The maximum of 9 gives way to the frame's 30.
    EXPECT_EQ(FirstRow(RunSigmoid(kFourLevels, 9)), (std::vector<uint16_t>{0, 289, 710, 1000}));
    run_.settings.POST_SIGMOID_RATIO = 0.3;
    EXPECT_EQ(FirstRow(RunSigmoid(kFourLevels, 40)), (std::vector<uint16_t>{0, 378, 755, 1000}));
}

TEST_F(FixedSigmoidTest, SigmoidDumpsAndLogsButWritesNoCurveFile) {
    SwitchAllOn();
    run_.settings.POST_SIGMOID_LUT = 1;
    run_.settings.POST_SIGMOID_RATIO = 0.346;
    run_.settings.OUTPUTRANGE = 1000;
    RunSigmoid(FromRows({{0, 1}}), 4);
    EXPECT_EQ(run_.DumpedNames(), (std::vector<std::string>{"05_resultsigmoid.raw"}));
    // Two pixels pass no limit, and without a curve all is 0.
    EXPECT_EQ(run_.Dumped("05_resultsigmoid.raw"), std::string(4, '\0'));
    EXPECT_EQ(run_.dumpCounter, 6);
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: Sigmoid Curve ( N ms )\r\n"
              "\t\t\t CutRatio   : 0.35\r\n");
}

// A ramp from 0 to the last occupied level, 30, and the limit is 0 here.
TEST_F(FixedSigmoidTest, SwitchOffTakesTheStraightRamp) {
    run_.settings.OUTPUTRANGE = 100;
    EXPECT_EQ(FirstRow(RunSigmoid(kFourLevels, 40)), (std::vector<uint16_t>{0, 33, 66, 100}));
    EXPECT_EQ(FirstRow(RunSigmoid(kFourLevels, 9)), (std::vector<uint16_t>{0, 33, 66, 100}));
    EXPECT_THAT(RunSigmoid(FromRows({{0, 10, 20}}), 30), EqualsFrame(FromRows({{0, 50, 100}})));
}

TEST_F(FixedSigmoidTest, StraightRampLogsOneLineAndDumpsNothing) {
    SwitchAllOn();
    RunSigmoid(kFourLevels, 40);
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(run_.dumpCounter, 5);
    EXPECT_EQ(MaskTimes(run_.LogText()), "#### hh:mm:ss \t: Linear Curve ( N ms )\r\n");
}

TEST_F(FixedSigmoidTest, LeavesNoTraceWithItsSwitchesOff) {
    run_.settings.SAVE_IMAGE = 1;  // the run's state decides on dumps, not the record
    RunSigmoid(kFourLevels, 40);
    run_.settings.POST_SIGMOID_LUT = 1;
    RunSigmoid(kFourLevels, 40);
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(run_.dumpCounter, 5);
    EXPECT_EQ(run_.LogText(), "");
}

using FixedGammaTest = FixedToneStageTest;

// 101 * {0, 0.25, 0.5, 0.75, 1}^2.
TEST_F(FixedGammaTest, RatioOfMagnitudeOneOrMoreIsTheExponent) {
    run_.settings.OUTPUTRANGE = 101;
    run_.settings.POST_GAMMA_RATIO = 2;
    EXPECT_THAT(RunGamma(FromRows({{10, 11, 12, 13, 14}}), 4095),
                EqualsFrame(FromRows({{0, 6, 25, 56, 101}})));
}

// The record's default is 0.5: of four pixels the third-brightest, 6 of 8, gives the exponent 1.5.
TEST_F(FixedGammaTest, RatioBelowOneJudgesTheFrame) {
    run_.settings.OUTPUTRANGE = 8;
    EXPECT_THAT(RunGamma(FromRows({{0, 8}, {7, 6}}), 8), EqualsFrame(FromRows({{0, 8}, {6, 5}})));
}

TEST_F(FixedGammaTest, DumpsAndLogsButWritesNoCurveFile) {
    SwitchAllOn();
    run_.settings.OUTPUTRANGE = 8;
    RunGamma(FromRows({{0, 8}, {7, 6}}), 8);
    EXPECT_EQ(run_.DumpedNames(), (std::vector<std::string>{"05_result_gamma.raw"}));
    EXPECT_EQ(run_.Dumped("05_result_gamma.raw"), std::string("\0\0\x08\0\x06\0\x05\0", 8));
    EXPECT_EQ(run_.dumpCounter, 6);
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: Gamma Curve ( N ms )\r\n"
              "\t\t\t Gamma : 1.50\r\n");
}

TEST_F(FixedGammaTest, LeavesNoTraceWithItsSwitchesOff) {
    RunGamma(FromRows({{0, 8}, {7, 6}}), 8);
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(run_.dumpCounter, 5);
    EXPECT_EQ(run_.LogText(), "");
}

}  // namespace
}  // namespace vastrelline
