// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfiguredState.h"
#include "stages/sigmoid/SigmoidStage.h"
#include "support/ConfiguredRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

// Levels 0, 10, 20 and 30, each 11 times, which is just above the limit; what the curve makes of them in
// 0..1000, centred in the middle and at a fraction of 0.3.
const Frame kFourLevels = Ramp(4, 11, 0, 10, 0);
Frame Columns(uint16_t a, uint16_t b, uint16_t c, uint16_t d) {
    Frame frame(4, 11);
    for (int32_t y = 0; y < 11; ++y) {
        frame.At(0, y) = a;
        frame.At(1, y) = b;
        frame.At(2, y) = c;
        frame.At(3, y) = d;
    }
    return frame;
}
const Frame kCentred = Columns(0, 289, 710, 1000);
const Frame kAtThreeTenths = Columns(0, 378, 755, 1000);

constexpr std::string_view kTo1000 = "OUTPUTRANGE=1000\r\n";

class SigmoidStageTest : public testing::Test {
protected:
    // Runs the stage at position 7.
    Frame Run(Frame frame, std::string_view keys, int32_t maxValue = 40) {
        run_.WriteProfile("[Molar]\r\n" + std::string(keys));
        RunSigmoidStage(frame.Data(), frame.width, frame.height, maxValue, run_.Log(), 7);
        return frame;
    }

    ConfiguredRun run_;
};

TEST_F(SigmoidStageTest, MissingKeyCentresTheCurve) {
    EXPECT_THAT(Run(kFourLevels, kTo1000), EqualsFrame(kCentred));
}

TEST_F(SigmoidStageTest, MapsTheFrameByTheKeyOfItsPosition) {
    EXPECT_THAT(Run(kFourLevels,
                    "OUTPUTRANGE=1000\r\n07_POST_SIGMOID_RATIO=0.3\r\n"
                    "06_POST_SIGMOID_RATIO=0.9\r\nPOST_SIGMOID_RATIO=0.9\r\n"),
                EqualsFrame(kAtThreeTenths));
}

// 4095 * {0, 550, 1353, 1903} / 1903 of a curve whose top is 5595: S is 666, 1898, 3696, 4928.
TEST_F(SigmoidStageTest, MissingOutputRangeIs4095) {
    EXPECT_THAT(Run(kFourLevels, "CAPTION=x\r\n"), EqualsFrame(Columns(0, 1183, 2911, 4095)));
    EXPECT_THAT(Run(kFourLevels, ""), EqualsFrame(Columns(0, 1183, 2911, 4095)));  // a section without a line
}

// With a table that ended at 9, levels 10 to 30 would not be counted.
TEST_F(SigmoidStageTest, LargestPixelMayLieAboveTheGivenMaximum) {
    EXPECT_THAT(Run(kFourLevels, kTo1000, 9), EqualsFrame(kCentred));
    EXPECT_THAT(Run(kFourLevels, kTo1000, 0), EqualsFrame(kCentred));
}

TEST_F(SigmoidStageTest, CurveFileAndDumpShareOneNumber) {
    SharedConfiguredState().SaveImage = 1;
    Run(Flat(3, 4, 2), kTo1000, 4);
    EXPECT_EQ(run_.DumpedNames(), (std::vector<std::string>{"05_SigmoidCurve.txt", "05_resultsigmoid.raw"}));
    EXPECT_EQ(run_.Dumped("05_SigmoidCurve.txt"), "0\t0\r\n1\t500\r\n2\t1000\r\n3\t1000\r\n4\t1000\r\n");
    std::string pixels;
    for (int32_t i = 0; i < 12; ++i) pixels += "\xE8\x03";
    EXPECT_EQ(run_.Dumped("05_resultsigmoid.raw"), pixels);
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
}

TEST_F(SigmoidStageTest, LogsTimeAndRatio) {
    SharedConfiguredState().SaveLog = 1;
    Run(kFourLevels, "07_POST_SIGMOID_RATIO=0.346\r\n");
    Run(kFourLevels, "CAPTION=x\r\n");
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: Sigmoid Curve ( S.SSS sec )\r\n"
              "\t\t\t CutRatio   : 0.35\r\n"
              "#### hh:mm:ss \t: Sigmoid Curve ( S.SSS sec )\r\n"
              "\t\t\t CutRatio   : 0.00\r\n");
}

TEST_F(SigmoidStageTest, LeavesNoTraceWithItsSwitchesOff) {
    Run(kFourLevels, "SAVE_IMAGE=1\r\nSAVE_LOG=1\r\n");
    EXPECT_EQ(run_.LogText(), "");
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
}

TEST_F(SigmoidStageTest, HostileKeysAreNoObstacle) {
    for (const std::string range : {"-2147483648", "2147483647", "-1500", "0"})
        for (const std::string ratio : {"nan", "inf", "-inf", "1e308", "-1", "0"})
            Run(Noise(5, 3, 65535, 6),
                "OUTPUTRANGE=" + range + "\r\n07_POST_SIGMOID_RATIO=" + ratio + "\r\n");
    // Fifteen pixels pass no limit: no curve, and all levels become 0.
    EXPECT_THAT(Run(Noise(5, 3, 65535, 6), "OUTPUTRANGE=2147483647\r\n07_POST_SIGMOID_RATIO=0\r\n"),
                EqualsFrame(Flat(5, 3, 0)));
}

TEST(ApplySigmoidCurve, MapsEachPixelAndThoseAboveTheTableToItsEnd) {
    Frame frame = kFourLevels;
    frame.At(0, 0) = 65535;  // leaves ten of level 0, which is no longer occupied: low is 0 all the same
    ApplySigmoidCurve(frame.Data(), 4, 11, 40, 1000, 0.0, 10, 0, L"", 0);
    Frame expected(4, 11);
    for (int32_t y = 0; y < 11; ++y) {
        expected.At(1, y) = 289;
        expected.At(2, y) = 710;
        expected.At(3, y) = 1000;
    }
    expected.At(0, 0) = 1000;
    EXPECT_THAT(frame, EqualsFrame(expected));
}

TEST(ApplySigmoidCurve, CurveFileHoldsAllLevels) {
    const TemporaryFolder folder;
    Frame frame = Flat(3, 4, 2);
    // Low 0, high 2, centre 1, width 2: S is 298, 1250 and 2201.
    ApplySigmoidCurve(frame.Data(), 3, 4, 4, 1000, 0.0, 10, 1, folder.Wide(L"x"), 7);
    EXPECT_EQ(ReadBytes(folder.Path() / "x07_SigmoidCurve.txt"),
              "0\t0\r\n1\t500\r\n2\t1000\r\n3\t1000\r\n4\t1000\r\n");
    EXPECT_THAT(frame, EqualsFrame(Flat(3, 4, 1000)));
}

}  // namespace
}  // namespace vastrelline
