#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
#include <set>

#include "entry/StageTable.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

// Stages of a table for tests: each marks a pixel of its own with its position.
constexpr std::array<StageEntry, 2> kTable = {{
    {StageId::Median, [](const StageCall& c) { c.frame[0] = static_cast<uint16_t>(c.position); }},
    {StageId::GammaLUT, [](const StageCall& c) { c.frame[1] = static_cast<uint16_t>(c.position); }},
}};

Frame RunOnZeroes(int32_t stageNumber, int32_t position) {
    Frame frame = Flat(2, 1, 0);
    LogFile log;
    RunStage(kTable, stageNumber, {frame.Data(), 2, 1, 2, 4095, log, position});
    return frame;
}

TEST(StageTable, RunsTheStageOfTheNumber) {
    EXPECT_THAT(RunOnZeroes(7, 5), EqualsFrame(FromRows({{5, 0}})));
    EXPECT_THAT(RunOnZeroes(10, 6), EqualsFrame(FromRows({{0, 6}})));
}

TEST(StageTable, NumberOutsideTheTableIsPassedOver) {
    for (const int32_t number : {0, 1, 13, 99, -1, -7, INT32_MAX, INT32_MIN}) {
        EXPECT_THAT(RunOnZeroes(number, 5), EqualsFrame(FromRows({{0, 0}}))) << number;
    }
}

TEST(StageTable, StageGetsEveryArgument) {
    static const StageCall* expected = nullptr;
    static bool isSame = false;
    constexpr std::array<StageEntry, 1> kChecking = {
        {{StageId::CLAHE, [](const StageCall& c) {
              isSame = c.frame == expected->frame && c.width == 2 && c.height == 3 && c.pixelCount == 6 &&
                       c.maxValue == 1023 && &c.log == &expected->log && c.position == 4;
          }}}};
    Frame frame = Flat(2, 3, 0);
    LogFile log;
    const StageCall call{frame.Data(), 2, 3, 6, 1023, log, 4};
    expected = &call;
    RunStage(kChecking, 3, call);
    EXPECT_TRUE(isSame);
}

TEST(StageTable, EveryStageOfTheConfiguredChainStandsOnce) {
    std::set<StageId> ids;
    for (const StageEntry& stage : ConfiguredStages()) {
        EXPECT_TRUE(ids.insert(stage.id).second);
        EXPECT_NE(stage.run, nullptr);
        EXPECT_GE(static_cast<int32_t>(stage.id), 1);
        // The configured chain has no stage 13: other chains do.
        EXPECT_LE(static_cast<int32_t>(stage.id), 12);
    }
    EXPECT_EQ(ids, (std::set<StageId>{StageId::GammaLUT, StageId::LinearLUT}));
}

}  // namespace
}  // namespace vastrelline
