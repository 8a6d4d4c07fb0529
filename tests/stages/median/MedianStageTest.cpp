// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "operators/median/MedianWindow.h"
#include "stages/median/MedianParams.h"
#include "stages/median/MedianPasses.h"
#include "stages/median/MedianStage.h"
#include "stages/median/RowBands.h"
#include "support/ConfiguredRun.h"
#include "support/FixedRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"

namespace vastrelline {
namespace {

Frame Filtered(Frame frame, const MedianParams& params) {
    FilterMedianPasses(frame.Data(), frame.width, frame.height, params);
    return frame;
}

Frame Square(Frame frame, int32_t mask) {
    MedianSquare(frame.Data(), frame.width, frame.height, mask);
    return frame;
}

class MedianStageTest : public testing::Test {
protected:
    // Runs the configured chain's stage at position 7.
    Frame Run(Frame frame, std::string_view keys) {
        run_.WriteProfile("[Molar]\r\n" + std::string(keys));
        RunMedianStage(frame.Data(), frame.width, frame.height, run_.Log(), 7);
        return frame;
    }

    ConfiguredRun run_;
};

// The middle row tells the modes apart: for its inner pixels rows give 4 3 4, columns 1 4 1, squares 2 2 3.
const Frame kModes = FromRows({{1, 1, 4, 1, 1}, {5, 2, 4, 3, 5}, {1, 1, 9, 1, 1}});

struct ModeCase {
    const char* name;
    const char* keys;
    Frame expected;
};

class MedianModeTest : public MedianStageTest, public testing::WithParamInterface<ModeCase> {};

TEST_P(MedianModeTest, SelectsTheWindow) {
    EXPECT_THAT(Run(kModes, GetParam().keys), EqualsFrame(GetParam().expected));
}

// Rows: 1 1 4 1 1 gives 1 1 1, 5 2 4 3 5 gives 4 3 4, 1 1 9 1 1 gives 1 1 1. Columns: 1 5 1, 1 2 1, 4 4 9, 1
// 3 1 and 1 5 1 give 1 1 4 1 1. Squares: 1 1 4 5 2 4 1 1 9 in order is 1 1 1 1 2 4 4 5 9; 1 4 1 2 4 3 1 9 1
// is 1 1 1 1 2 3 4 4 9; 4 1 1 4 3 5 9 1 1 is 1 1 1 1 3 4 4 5 9.
const Frame kModesByRows = FromRows({{1, 1, 1, 1, 1}, {5, 4, 3, 4, 5}, {1, 1, 1, 1, 1}});
const Frame kModesByColumns = FromRows({{1, 1, 4, 1, 1}, {1, 1, 4, 1, 1}, {1, 1, 9, 1, 1}});
const Frame kModesByRowsThenColumns = FromRows({{1, 1, 1, 1, 1}, {1, 1, 1, 1, 1}, {1, 1, 1, 1, 1}});
const Frame kModesBySquare = FromRows({{1, 1, 4, 1, 1}, {5, 2, 2, 3, 5}, {1, 1, 9, 1, 1}});

INSTANTIATE_TEST_SUITE_P(
    Modes, MedianModeTest,
    testing::Values(
        ModeCase{"MissingKeysMeanOnePassOfASquareOfThree", "", kModesBySquare},
        ModeCase{"Zero", "07_MEDIAN_Mode=0\r\n", kModesBySquare},
        ModeCase{"One", "07_MEDIAN_Mode=1\r\n", kModesByRowsThenColumns},
        ModeCase{"Two", "07_MEDIAN_Mode=2\r\n", kModesByRows},
        ModeCase{"Three", "07_MEDIAN_Mode=3\r\n", kModesByColumns},
        ModeCase{"Four", "07_MEDIAN_Mode=4\r\n", kModesBySquare},
        ModeCase{"Negative", "07_MEDIAN_Mode=-1\r\n", kModesBySquare},
        ModeCase{"KeysOfOtherPositionsAreNoMatter",
                 "06_MEDIAN_Mode=2\r\nMEDIAN_Mode=3\r\n07_MEDIAN_REPEAT=1\r\n08_MEDIAN_SIZE=9\r\n",
                 kModesBySquare},
        ModeCase{"SizeBelowTwoActsAsThree", "07_MEDIAN_SIZE=0\r\n", kModesBySquare},
        ModeCase{"SmallestSizeActsAsThree", "07_MEDIAN_SIZE=-2147483648\r\n", kModesBySquare},
        ModeCase{"LargestSizeChangesNothing", "07_MEDIAN_SIZE=2147483647\r\n", kModes},
        ModeCase{"LargestRowsChangeNothing",
                 "07_MEDIAN_SIZE=2147483646\r\n07_MEDIAN_Mode=1\r\n07_MEDIAN_REPEAT=2147483647\r\n", kModes},
        ModeCase{"NoPassChangesNothing", "07_MEDIAN_REPEAT=0\r\n", kModes},
        ModeCase{"NegativeRepeatChangesNothing", "07_MEDIAN_REPEAT=-1\r\n", kModes}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(MedianStageTest, SizeFourIsAWindowOfFiveInEveryMode) {
    const Frame frame = Noise(21, 13, 4095, 3);
    for (const int32_t mode : {0, 1, 2, 3})
        EXPECT_THAT(Filtered(frame, {4, 1, mode}), EqualsFrame(Filtered(frame, {5, 1, mode}))) << mode;
    EXPECT_THAT(Filtered(frame, {4, 1, 0}), EqualsFrame(Square(frame, 5)));
}

TEST_F(MedianStageTest, ResultDoesNotDependOnTheNumberOfThreads) {
    const Frame frame = Noise(75, 40, 4095, 8);
    for (const int32_t mask : {0, 3, 9, 17, 39}) {
        const Frame expected = Square(frame, WidenMedianMask(mask));
        for (const int32_t threads : {1, 2, 31}) {
            MedianThreadCount() = threads;
            EXPECT_THAT(Filtered(frame, {mask, 1, 0}), EqualsFrame(expected)) << mask << ", " << threads;
        }
        MedianThreadCount() = 2;
    }
}

TEST_F(MedianStageTest, EachPassFiltersTheOneBefore) {
    Frame expected = Noise(30, 20, 4095, 9);
    const Frame frame = expected;
    for (int32_t passes = 1; passes <= 20; ++passes) {
        expected = Square(expected, 3);
        EXPECT_THAT(Filtered(frame, {3, passes, 0}), EqualsFrame(expected)) << passes;
    }
}

// Each of the four pixels around the middle sees three pixels of either level that stay, itself, and two of
// the other four, which are its opposites: every pass swaps the levels of the four, for ever.
const Frame kBlinker =
    FromRows({{0, 1, 0, 0, 0}, {1, 1, 0, 0, 0}, {0, 1, 1, 1, 0}, {0, 0, 0, 1, 1}, {0, 0, 0, 1, 0}});
const Frame kBlinkerTurned =
    FromRows({{0, 1, 0, 0, 0}, {1, 1, 1, 0, 0}, {0, 0, 1, 0, 0}, {0, 0, 1, 1, 1}, {0, 0, 0, 1, 0}});

TEST_F(MedianStageTest, PassesForEverOfAFrameThatAlternatesEndAtTheRightOne) {
    EXPECT_THAT(Filtered(kBlinker, {3, 1, 0}), EqualsFrame(kBlinkerTurned));
    EXPECT_THAT(Filtered(kBlinker, {3, 2, 0}), EqualsFrame(kBlinker));
    EXPECT_THAT(Filtered(kBlinker, {3, INT_MAX, 0}), EqualsFrame(kBlinkerTurned));
    EXPECT_THAT(Filtered(kBlinker, {3, INT_MAX - 1, 0}), EqualsFrame(kBlinker));
}

TEST_F(MedianStageTest, PassesForEverOfNoiseEndInAFrameThatStays) {
    for (const int32_t mode : {0, 1, 2, 3}) {
        const Frame rest = Filtered(Noise(24, 16, 4095, 2), {3, INT_MAX, mode});
        EXPECT_THAT(Filtered(rest, {3, 2, mode}), EqualsFrame(rest)) << mode;
    }
}

TEST_F(MedianStageTest, LogsAndDumpsAsTheSwitchesAsk) {
    SharedConfiguredState().SaveLog = 1;
    SharedConfiguredState().SaveImage = 1;
    Run(FromRows({{1, 2}, {300, 4095}}), "07_MEDIAN_SIZE=-4\r\n07_MEDIAN_REPEAT=7\r\n");
    Run(kModes, "");
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: Median ( S.SSS sec )\r\n"
              "\t\t\t MaskSize   : -4\r\n"
              "\t\t\t RepaetCnt  : 7\r\n"
              "#### hh:mm:ss \t: Median ( S.SSS sec )\r\n"
              "\t\t\t MaskSize   : 3\r\n"
              "\t\t\t RepaetCnt  : 1\r\n");
    EXPECT_EQ(run_.DumpedNames(), (std::vector<std::string>{"05_median.raw", "06_median.raw"}));
    EXPECT_EQ(run_.Dumped("05_median.raw"), std::string("\x01\0\x02\0\x2C\x01\xFF\x0F", 8));
    EXPECT_EQ(run_.Dumped("06_median.raw"),
              std::string("\1\0\1\0\4\0\1\0\1\0\5\0\2\0\2\0\3\0\5\0\1\0\1\0\x09\0\1\0\1\0", 30));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 7);
}

TEST_F(MedianStageTest, LeavesNoTraceWithItsSwitchesOff) {
    Run(kModes, "SAVE_IMAGE=1\r\nSAVE_LOG=1\r\n");
    EXPECT_EQ(run_.LogText(), "");
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
}

TEST_F(MedianStageTest, SmallestFramesAreNoObstacle) {
    for (const Frame& frame : {Frame(0, 3), Flat(1, 1, 9), FromRows({{3, 1}}), FromRows({{1, 2}, {3, 4}})})
        EXPECT_THAT(Run(frame, "07_MEDIAN_REPEAT=3\r\n"), EqualsFrame(frame));
}

Frame Pre(FixedRun& run, Frame frame) {
    RunPreMedian(frame.Data(), frame.width, frame.height, run.dumpCounter, run.Log(), run.settings);
    return frame;
}

Frame Post(FixedRun& run, Frame frame, int32_t maxValue = 4095) {
    RunPostMedian(frame.Data(), frame.width, frame.height, maxValue, run.dumpCounter, run.Log(),
                  run.settings);
    return frame;
}

TEST(PreMedian, LogsAndDumpsOnePass) {
    FixedRun run;
    run.settings.SAVE_LOG = 1;
    SharedFixedState().SaveImage = 1;
    EXPECT_THAT(Pre(run, kModes), EqualsFrame(kModesBySquare));
    EXPECT_EQ(MaskTimes(run.LogText()),
              "#### hh:mm:ss \t: Pre-Median ( N ms )\r\n"
              "\t\t\t MaskSize   : 3\r\n");
    EXPECT_EQ(run.DumpedNames(), std::vector<std::string>{"05_premedian.raw"});
    EXPECT_EQ(run.Dumped("05_premedian.raw").substr(10, 10), std::string("\5\0\2\0\2\0\3\0\5\0", 10));
    EXPECT_EQ(run.dumpCounter, 6);
}

// The window of the only pixel that has one holds 8 pixels below 50 and 8 above: the ninth is the 60.
TEST(PreMedian, SizeFourIsAnEvenWindow) {
    FixedRun run;
    run.settings.PRE_MEDIAN_SIZE = 4;
    const Frame frame = FromRows({{1, 2, 3, 4, 99},
                                  {5, 6, 7, 8, 99},
                                  {60, 61, 62, 63, 99},
                                  {64, 65, 66, 67, 99},
                                  {99, 99, 99, 99, 99}});
    Frame expected = frame;
    expected.At(2, 2) = 60;
    EXPECT_THAT(Pre(run, frame), EqualsFrame(expected));
}

TEST(PostMedian, LogsAndDumpsThreePasses) {
    FixedRun run;
    run.settings.SAVE_LOG = 1;
    SharedFixedState().SaveImage = 1;
    const Frame frame = Noise(20, 9, 4095, 12);
    const Frame expected = Square(Square(Square(frame, 3), 3), 3);
    EXPECT_THAT(Post(run, frame, 1), EqualsFrame(expected));  // the largest value has no say
    EXPECT_EQ(MaskTimes(run.LogText()),
              "#### hh:mm:ss \t: Post-NoiseReduction ( N ms )\r\n"
              "\t\t\t MaskSize   : 3\r\n"
              "\t\t\t RepeatCnt  : 3\r\n");
    EXPECT_EQ(run.DumpedNames(), std::vector<std::string>{"05_post_median.raw"});
    EXPECT_EQ(run.dumpCounter, 6);
}

TEST(PostMedian, HostileKeysNeitherHangNorChangeWhatHasNoWindow) {
    const Frame frame = Noise(12, 9, 4095, 13);
    for (const int32_t mask : {INT_MIN, -1, 0, 1, 10, INT_MAX}) {
        FixedRun run;
        run.settings.POST_MEDIAN_SIZE = run.settings.PRE_MEDIAN_SIZE = mask;
        run.settings.POST_MEDIAN_REPEAT = INT_MAX;
        EXPECT_THAT(Post(run, frame), EqualsFrame(frame)) << mask;
        EXPECT_THAT(Pre(run, frame), EqualsFrame(frame)) << mask;
    }
}

TEST(PostMedian, PassesForEverOfAFrameThatAlternatesEndAtTheRightOne) {
    FixedRun run;
    run.settings.POST_MEDIAN_REPEAT = INT_MAX;
    EXPECT_THAT(Post(run, kBlinker), EqualsFrame(kBlinkerTurned));
}

TEST(FixedMedians, LeaveNoTraceWithTheirSwitchesOff) {
    FixedRun run;
    Pre(run, kModes);
    Post(run, kModes);
    EXPECT_EQ(run.LogText(), "");
    EXPECT_TRUE(run.DumpedNames().empty());
    EXPECT_EQ(run.dumpCounter, 5);
}

}  // namespace
}  // namespace vastrelline
