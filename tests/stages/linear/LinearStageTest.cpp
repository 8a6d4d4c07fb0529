// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfiguredState.h"
#include "stages/linear/LinearStage.h"
#include "support/ConfiguredRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class LinearStageTest : public testing::Test {
protected:
    // Runs the stage at position 7 of a section "Molar" with these lines.
    Frame RunStage(Frame frame, const std::string& lines, int32_t maxValue) {
        run_.WriteProfile("[Molar]\r\n" + lines);
        RunLinearStage(frame.Data(), frame.width, frame.height, maxValue, run_.Log(), 7);
        return frame;
    }
    ConfiguredRun& Run() { return run_; }

private:
    ConfiguredRun run_;
};

TEST_F(LinearStageTest, ModeZeroTakesTheTopFromTheHistogram) {
    EXPECT_THAT(RunStage(FromRows({{0, 5, 20}, {20, 10, 40}}),
                         "OUTPUTRANGE=100\r\n07_POST_LINEAR_LIMITBIN=1\r\n", 50),
                EqualsFrame(FromRows({{0, 25, 100}, {100, 50, 100}})));
}

TEST_F(LinearStageTest, ModeZeroWithMinusOneTakesTheFullRange) {
    EXPECT_THAT(RunStage(FromRows({{0, 5, 20}}), "OUTPUTRANGE=100\r\n07_POST_LINEAR_LIMITBIN=-1\r\n", 50),
                EqualsFrame(FromRows({{0, 10, 40}})));
}

TEST_F(LinearStageTest, ModeOneTakesTheTopFromAPixelCount) {
    EXPECT_THAT(RunStage(FromRows({{0, 5, 10}, {20, 40, 40}}),
                         "OUTPUTRANGE=100\r\n07_POST_LINEAR_MODE=1\r\n07_POST_LINEAR_LIMITBIN=2\r\n", 50),
                EqualsFrame(FromRows({{0, 25, 50}, {100, 100, 100}})));
}

TEST_F(LinearStageTest, KeysOfOtherPositionsAndSectionsAreNoMatter) {
    EXPECT_THAT(
        RunStage(FromRows({{0, 5, 20}}),
                 "OUTPUTRANGE=100\r\nPOST_LINEAR_MODE=2\r\n06_POST_LINEAR_MODE=2\r\n"
                 "07_POST_LINEAR_LIMITBIN=-1\r\n[Other]\r\nOUTPUTRANGE=7\r\n07_POST_LINEAR_MODE=2\r\n",
                 50),
        EqualsFrame(FromRows({{0, 10, 40}})));
}

// Two single pixels make no average of 1, so 4095 is the top, and the ramp is the identity.
TEST_F(LinearStageTest, MissingKeysGiveModeZeroLimitZeroAnd4095) {
    EXPECT_THAT(RunStage(FromRows({{1000, 3000}}), "CAPTION=x\r\n", 4095),
                EqualsFrame(FromRows({{1000, 3000}})));
}

// 1000 is a quarter of 4000: the ramp ends there, at 4095.
TEST_F(LinearStageTest, SectionWithoutALineMeansTheDefaults) {
    for (const char* profile : {"", "[Other]\r\nOUTPUTRANGE=7\r\n[Molar]\r\n"}) {
        Frame frame = FromRows({{0, 1000, 4000}});
        Run().WriteProfile(profile);
        RunLinearStage(frame.Data(), 3, 1, 4000, Run().Log(), 7);
        EXPECT_THAT(frame, EqualsFrame(FromRows({{0, 1023, 4095}}))) << profile;
    }
}

struct WindowCase {
    const char* name;
    const char* brightOpt;
    std::vector<uint16_t> pixels;  // of {0, 10, 35, 50, 70, 90, 100}, at maxValue and OUTPUTRANGE 100
};

class LinearStageWindowTest : public LinearStageTest, public testing::WithParamInterface<WindowCase> {};

TEST_P(LinearStageWindowTest, ShiftMovesAndWidensTheWindow) {
    const std::string lines = std::string("OUTPUTRANGE=100\r\n07_POST_LINEAR_MODE=2\r\n") +
                              "07_POST_LINEAR_LIMITBIN=3\r\n07_POST_LINEAR_BRIGHTOPT=" + GetParam().brightOpt;
    EXPECT_THAT(RunStage(FromRows({{0, 10, 35, 50, 70, 90, 100}}), lines, 100),
                EqualsFrame(Frame(7, 1, GetParam().pixels)));
}

INSTANTIATE_TEST_SUITE_P(
    Shifts, LinearStageWindowTest,
    testing::Values(
        // 100 wide around 50
        WindowCase{"None", "0", {0, 10, 35, 50, 70, 90, 100}},
        // 120 wide around 70: 10 to 130. 25, 40, 60, 80, 90 of 120 are 20.83, 33.33, 50, 66.67, 75.
        WindowCase{"UpDarkens", "20", {0, 0, 20, 33, 50, 66, 75}},
        // 120 wide around 30: -30 to 90. 30, 40, 65, 80, 100 of 120 are 25, 33.33, 54.17, 66.67, 83.33.
        WindowCase{"DownBrightens", "-20", {25, 33, 54, 66, 83, 100, 100}},
        // 121 wide around 71: half of it is 60.5 and counts as 61; 10 to 132.
        // 25, 40, 60, 80, 90 of 122 are 20.49, 32.79, 49.18, 65.57, 73.77.
        WindowCase{"OddUp", "21", {0, 0, 20, 32, 49, 65, 73}}),
    [](const auto& test) { return std::string(test.param.name); });

// Half of 4095 is cut to 2047 for the centre and rounded to 2048 for the half window: -1 to 4095.
TEST_F(LinearStageTest, WindowOf4095LevelsEndsAt4095) {
    EXPECT_THAT(RunStage(FromRows({{0, 1, 2047, 4094, 4095}}), "07_POST_LINEAR_MODE=2\r\n", 4095),
                EqualsFrame(FromRows({{0, 1, 2047, 4094, 4095}})));
    EXPECT_THAT(
        RunStage(FromRows({{0, 1, 2047, 4094, 4095}}), "07_POST_LINEAR_MODE=2\r\nOUTPUTRANGE=8192\r\n", 4095),
        EqualsFrame(FromRows({{2, 4, 4096, 8190, 8192}})));
}

TEST_F(LinearStageTest, HostileShiftIsSafe) {
    for (const char* shift : {"2147483647", "-2147483648", "-2147483647", "1e300", "nan"}) {
        Frame frame = FromRows({{0, 50, 100}});
        frame = RunStage(
            frame, std::string("OUTPUTRANGE=0\r\n07_POST_LINEAR_MODE=2\r\n07_POST_LINEAR_BRIGHTOPT=") + shift,
            100);
        EXPECT_THAT(frame, EqualsFrame(Flat(3, 1, 0))) << shift;
    }
}

TEST_F(LinearStageTest, LogsTimeAndParameters) {
    SharedConfiguredState().SaveLog = 1;
    RunStage(FromRows({{1, 2}}),
             "07_POST_LINEAR_MODE=1\r\n07_POST_LINEAR_LIMITBIN=-25\r\n07_POST_LINEAR_BRIGHTOPT=300\r\n",
             4095);
    RunStage(FromRows({{1, 2}}), "07_POST_LINEAR_MODE=2\r\n", 4095);
    EXPECT_EQ(MaskTimes(Run().LogText()),
              "#### hh:mm:ss \t: Linear Curve ( S.SSS sec )\r\n"
              "\t\t\t Mode        : 1\r\n"
              "\t\t\t LimitBin    : -25\r\n"
              "\t\t\t BrightOpt   : 300\r\n"
              "#### hh:mm:ss \t: Linear Curve ( S.SSS sec )\r\n"
              "\t\t\t Mode        : 2\r\n"
              "\t\t\t LimitBin    : 0\r\n"
              "\t\t\t BrightOpt   : 0\r\n");
}

TEST_F(LinearStageTest, SwitchesComeFromTheRunAndNotFromTheProfile) {
    RunStage(FromRows({{1, 2}}), "SAVE_IMAGE=1\r\nSAVE_LOG=1\r\n", 4095);
    EXPECT_EQ(Run().LogText(), "");
    EXPECT_TRUE(Run().DumpedNames().empty());
}

// There is no dump, and the number stays for the next one.
// A quarter of 100000 a level. A pixel takes the low 16 bits: 75000 is 65536 and 9464, 100000 is 65536 and
// 34464.
TEST_F(LinearStageTest, CurveFileShowsValuesBeyondSixteenBits) {
    SharedConfiguredState().SaveImage = 1;
    constexpr std::string_view kCurve = "0\t0\r\n1\t25000\r\n2\t50000\r\n3\t75000\r\n4\t100000\r\n";
    EXPECT_THAT(RunStage(FromRows({{0, 2, 3, 4}}), "OUTPUTRANGE=100000\r\n07_POST_LINEAR_LIMITBIN=-1\r\n", 4),
                EqualsFrame(FromRows({{0, 50000, 9464, 34464}})));
    EXPECT_EQ(Run().Dumped("05_LinearCurve.txt"), kCurve);
    EXPECT_THAT(RunStage(FromRows({{0, 2, 3, 4}}), "OUTPUTRANGE=100000\r\n07_POST_LINEAR_MODE=2\r\n", 4),
                EqualsFrame(FromRows({{0, 50000, 9464, 34464}})));
    EXPECT_EQ(Run().Dumped("05_LinearCurve2.txt"), kCurve);
}

TEST_F(LinearStageTest, CurveFileCarriesTheNumberOfTheNextDump) {
    SharedConfiguredState().SaveImage = 1;
    RunStage(FromRows({{0, 4}}), "OUTPUTRANGE=8\r\n07_POST_LINEAR_LIMITBIN=-1\r\n", 4);
    RunStage(FromRows({{0, 4}}), "OUTPUTRANGE=8\r\n07_POST_LINEAR_MODE=2\r\n", 4);
    EXPECT_EQ(Run().DumpedNames(), (std::vector<std::string>{"05_LinearCurve.txt", "05_LinearCurve2.txt"}));
    EXPECT_EQ(Run().Dumped("05_LinearCurve.txt"), "0\t0\r\n1\t2\r\n2\t4\r\n3\t6\r\n4\t8\r\n");
    EXPECT_EQ(Run().Dumped("05_LinearCurve2.txt"), "0\t0\r\n1\t2\r\n2\t4\r\n3\t6\r\n4\t8\r\n");
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
}

TEST_F(LinearStageTest, ClosedLogIsNoObstacle) {
    SharedConfiguredState().SaveLog = 1;
    Run().Log().Close();
    EXPECT_THAT(RunStage(FromRows({{0, 5, 20}}), "OUTPUTRANGE=100\r\n07_POST_LINEAR_LIMITBIN=-1\r\n", 50),
                EqualsFrame(FromRows({{0, 10, 40}})));
}

TEST(ApplyLinearCurve, PixelsAboveTheTableTakeItsLastEntry) {
    // Only 5 and 4 count: the top is 5.
    Frame frame = FromRows({{4, 5, 11, 65535}});
    ApplyLinearCurve(frame.Data(), 4, 1, 10, 100, 0, 1, 0, L"", 0);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{80, 100, 100, 100}})));
}

TEST(ApplyLinearCurve, FrameWithoutPixelsIsNoWork) {
    ApplyLinearCurve(nullptr, 0, 7, 4095, 4095, 0, 0, 0, L"", 0);
    ApplyWindowCurve(nullptr, 0, 7, 4095, 2047, 4095, 0, L"", 0);
    Frame frame = FromRows({{7}});
    ApplyLinearCurve(frame.Data(), 0, 7, 4095, 4095, -1, 0, 0, L"", 0);
    ApplyLinearCurve(frame.Data(), 7, 0, 4095, 4095, -1, 0, 0, L"", 0);
    ApplyWindowCurve(frame.Data(), 0, 7, 4095, 2047, 4095, 0, L"", 0);
    ApplyWindowCurve(frame.Data(), 7, 0, 4095, 2047, 4095, 0, L"", 0);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{7}})));
}

TEST(ApplyLinearCurve, FileListsEveryLevelOfTheTable) {
    const TemporaryFolder folder;
    Frame frame = FromRows({{0, 1, 1, 1, 3, 3, 4}});
    ApplyLinearCurve(frame.Data(), 7, 1, 6, 100, 0, 0, 1, folder.Wide(L"Curve"), 7);
    EXPECT_EQ(ReadBytes(folder.Path() / "Curve07_LinearCurve.txt"),
              "0\t0\r\n1\t25\r\n2\t50\r\n3\t75\r\n4\t100\r\n5\t100\r\n6\t100\r\n");
    EXPECT_THAT(frame, EqualsFrame(FromRows({{0, 25, 25, 25, 75, 75, 100}})));
}

TEST(ApplyLinearCurve, FileThatCannotBeMadeChangesNoPixel) {
    const TemporaryFolder folder;
    Frame frame = FromRows({{0, 3, 6}});
    ApplyLinearCurve(frame.Data(), 3, 1, 6, 100, -1, 0, 1, folder.Wide(L"missing") + L"\\", 7);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{0, 50, 100}})));
    frame = FromRows({{0, 3, 6}});
    ApplyWindowCurve(frame.Data(), 3, 1, 6, 3, 100, 1, folder.Wide(L"missing") + L"\\", 7);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{0, 50, 100}})));
}

TEST(ApplyWindowCurve, FileEndsWithTheRampOrWithTheFrame) {
    const TemporaryFolder folder;
    const auto fileOf = [&](int32_t centre) {
        Frame frame = FromRows({{3, 0, 6}});
        ApplyWindowCurve(frame.Data(), 3, 1, 4, centre, 100, 1, folder.Wide(L"W"), 3);
        return ReadBytes(folder.Path() / "W03_LinearCurve2.txt");
    };
    // 0 to 4, then 4 to 8, then -5 to -1.
    EXPECT_EQ(fileOf(2), "0\t0\r\n1\t25\r\n2\t50\r\n3\t75\r\n4\t100\r\n");
    EXPECT_EQ(fileOf(6), "0\t0\r\n1\t0\r\n2\t0\r\n3\t0\r\n4\t0\r\n5\t25\r\n6\t50\r\n");
    EXPECT_EQ(fileOf(-3), "");
}

}  // namespace
}  // namespace vastrelline
