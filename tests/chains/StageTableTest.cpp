// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "chains/StageTable.h"
#include "config/ConfiguredState.h"
#include "operators/curves/TonedFrame.h"
#include "support/ConfiguredRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/StageNames.h"

namespace vastrelline {
namespace {

// Stages of a table for tests: each marks a pixel of its own with its position.
constexpr std::array<StageEntry, 2> kTable = {{
    {StageId::Median, [](const StageCall& c) { c.Pixels()[0] = static_cast<uint16_t>(c.position); }},
    {StageId::GammaLUT, [](const StageCall& c) { c.Pixels()[1] = static_cast<uint16_t>(c.position); }},
}};

Frame RunOnZeroes(int32_t stageNumber, int32_t position) {
    Frame frame = Flat(2, 1, 0);
    TonedFrame toned({frame.Data(), 2, 1});
    LogFile log;
    RunStage(kTable, stageNumber, {{toned, 4095, log}, position});
    return frame;
}

TEST(StageTable, RunsTheStageOfTheNumber) {
    EXPECT_THAT(RunOnZeroes(7, 5), EqualsFrame(FromRows({{5, 0}})));
    EXPECT_THAT(RunOnZeroes(10, 6), EqualsFrame(FromRows({{0, 6}})));
}

TEST(StageTable, StageFindsThePixelsThroughTheCurvesBefore) {
    Frame frame = FromRows({{3, 4}});
    TonedFrame toned({frame.Data(), 2, 1});
    toned.Map(std::vector<uint16_t>{0, 0, 0, 7, 8});
    LogFile log;
    RunStage(kTable, 7, {{toned, 4095, log}, 5});
    EXPECT_THAT(frame, EqualsFrame(FromRows({{5, 8}})));
}

TEST(StageTable, NumberOutsideTheTableIsPassedOver) {
    for (const int32_t number : {0, 1, 13, 99, -1, -7, INT32_MAX, INT32_MIN}) {
        EXPECT_THAT(RunOnZeroes(number, 5), EqualsFrame(FromRows({{0, 0}}))) << number;
    }
}

TEST(StageTable, StageGetsEveryArgument) {
    static const StageCall* expected = nullptr;
    static bool isSame = false;
    constexpr std::array<StageEntry, 1> kChecking = {{{StageId::CLAHE, [](const StageCall& c) {
                                                           isSame =
                                                               &c.frame == &expected->frame &&
                                                               c.Width() == 2 && c.Height() == 3 &&
                                                               c.PixelCount() == 6 && c.maxValue == 1023 &&
                                                               &c.log == &expected->log && c.position == 4;
                                                       }}}};
    Frame frame = Flat(2, 3, 0);
    TonedFrame toned({frame.Data(), 2, 3});
    LogFile log;
    const StageCall call{{toned, 1023, log}, 4};
    expected = &call;
    RunStage(kChecking, 3, call);
    EXPECT_TRUE(isSame);
}

std::set<int32_t> NumbersIn(std::span<const StageEntry> stages) {
    std::set<int32_t> numbers;
    for (const StageEntry& stage : stages) {
        EXPECT_TRUE(numbers.insert(static_cast<int32_t>(stage.id)).second);
        EXPECT_NE(stage.run, nullptr);
    }
    return numbers;
}

TEST(StageTable, EveryStageStandsOnce) {
    EXPECT_EQ(NumbersIn(AllStages()), (std::set<int32_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
}

TEST(StageTable, ConfiguredChainHasNoHdrStage) {
    EXPECT_EQ(NumbersIn(ConfiguredStages()), (std::set<int32_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
}

// A stage's log line tells which one ran.
TEST(StageTable, EveryNumberRunsItsStage) {
    const struct {
        int32_t number;
        std::vector<std::string> names;
    } cases[] = {{1, {"PreConstrast"}},
                 {2, {"StretchCurve"}},
                 {3, {"CLAHE"}},
                 {4, {"AdaptiveUnsharp"}},
                 {5, {"AdapSmooth - Savgol"}},
                 {6, {"pyramid"}},
                 {7, {"Median"}},
                 {8, {"Gaussian"}},
                 {9, {"Sigmoid Curve"}},
                 {10, {"Gamma Curve"}},
                 {11, {"Linear Curve"}},
                 {12, {}},
                 {13, {"HDR"}}};
    for (const auto& c : cases) {
        ConfiguredRun run;
        run.WriteProfile("[Molar]\r\n");
        SharedConfiguredState().SaveLog = 1;
        Frame frame = Noise(12, 12, 4095, 1);
        TonedFrame toned({frame.Data(), 12, 12});
        RunStage(AllStages(), c.number, {{toned, 4095, run.Log()}, 0});
        EXPECT_EQ(StageNamesIn(run.LogText()), c.names) << c.number;
    }
}

TEST(StageTable, StageEightSmoothesByTheKeysOfItsPosition) {
    ConfiguredRun run;
    run.WriteProfile("[Molar]\r\n04_GAUSSIAN_SIZE=0\r\n05_GAUSSIAN_REPEAT=0\r\n");
    Frame frame = FromRows({{1000, 0, 0, 0, 0, 0, 0}});
    TonedFrame toned({frame.Data(), 7, 1});
    RunStage(ConfiguredStages(), 8, {{toned, 4095, run.Log()}, 4});
    // The fixed taps 0.05, 0.25, 0.4, 0.25, 0.05, around the edges.
    EXPECT_THAT(frame, EqualsFrame(FromRows({{400, 250, 50, 0, 0, 50, 250}})));
    RunStage(ConfiguredStages(), 8, {{toned, 4095, run.Log()}, 5});
    EXPECT_THAT(frame, EqualsFrame(FromRows({{400, 250, 50, 0, 0, 50, 250}})));
}

TEST(StageTable, StageEightGetsTheLargestValue) {
    ConfiguredRun run;
    run.WriteProfile("[Molar]\r\n00_GAUSSIAN_SIZE=0\r\n");
    Frame frame = FromRows({{1000, 0, 0, 0, 0, 0, 0}});
    TonedFrame toned({frame.Data(), 7, 1});
    RunStage(ConfiguredStages(), 8, {{toned, 255, run.Log()}, 0});
    EXPECT_THAT(frame, EqualsFrame(FromRows({{255, 250, 50, 0, 0, 50, 250}})));
}

}  // namespace
}  // namespace vastrelline
