// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "report/RunDumps.h"
#include "support/ConfiguredRun.h"
#include "support/FixedRun.h"

namespace vastrelline {
namespace {

constexpr uint16_t kPixel = 0x1234;

TEST(RunDumps, OfTheConfiguredChainAreNothingWhileSavingIsOff) {
    ConfiguredRun run;
    const int32_t number = SharedConfiguredState().DumpNumber;
    RunDumps::Configured().Dump(L"%02d_Stage.raw", &kPixel, 1, 1);
    EXPECT_EQ(SharedConfiguredState().DumpNumber, number);
    EXPECT_THAT(run.DumpedNames(), testing::IsEmpty());
}

TEST(RunDumps, OfTheConfiguredChainTakeTheProcessWideNumberAndStepIt) {
    ConfiguredRun run;
    SharedConfiguredState().SaveImage = 2;  // any number but 0
    SharedConfiguredState().DumpNumber = 41;
    RunDumps::Configured().Dump(L"%02d_Stage.raw", &kPixel, 1, 1);
    RunDumps::Configured().Dump(L"%02d_Other.raw", &kPixel, 1, 1);
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 43);
    EXPECT_EQ(run.Dumped("41_stage.raw"), "\x34\x12");
    EXPECT_EQ(run.Dumped("42_other.raw"), "\x34\x12");
}

TEST(RunDumps, OfTheConfiguredChainMayLeaveTheNumberToTheNext) {
    ConfiguredRun run;
    SharedConfiguredState().DumpNumber = 41;
    RunDumps::Configured().DumpBeside(L"%02d_Off.raw", &kPixel, 1, 1);
    SharedConfiguredState().SaveImage = 1;
    RunDumps::Configured().DumpBeside(L"%02d_Stage.raw", &kPixel, 1, 1);
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 41);
    EXPECT_EQ(run.Dumped("41_stage.raw"), "\x34\x12");
    EXPECT_THAT(run.DumpedNames(), testing::ElementsAre("41_stage.raw"));
}

TEST(RunDumps, OfTheFixedChainAreNothingWhileSavingIsOff) {
    FixedRun run;
    RunDumps::Fixed(run.dumpCounter).Dump(L"%02d_Stage.raw", &kPixel, 1, 1);
    RunDumps::Fixed(run.dumpCounter).DumpBeside(L"%02d_Stage.raw", &kPixel, 1, 1);
    EXPECT_EQ(run.dumpCounter, 5);
    EXPECT_THAT(run.DumpedNames(), testing::IsEmpty());
}

TEST(RunDumps, OfTheFixedChainTakeTheRunsNumberAndStepIt) {
    FixedRun run;
    SharedFixedState().SaveImage = 1;
    const int32_t processNumber = SharedConfiguredState().DumpNumber;
    RunDumps::Fixed(run.dumpCounter).DumpBeside(L"%02d_Beside.raw", &kPixel, 1, 1);
    RunDumps::Fixed(run.dumpCounter).Dump(L"%02d_Stage.raw", &kPixel, 1, 1);
    EXPECT_EQ(run.dumpCounter, 6);
    EXPECT_EQ(SharedConfiguredState().DumpNumber, processNumber);
    EXPECT_THAT(run.DumpedNames(), testing::ElementsAre("05_beside.raw", "05_stage.raw"));
    EXPECT_EQ(run.Dumped("05_stage.raw"), "\x34\x12");
}

TEST(RunDumps, TellWhereTheyGo) {
    ConfiguredRun configured;
    FixedRun fixed;
    EXPECT_FALSE(RunDumps::Configured().AreOn());
    EXPECT_FALSE(RunDumps::Fixed(fixed.dumpCounter).AreOn());
    SharedConfiguredState().SaveImage = -1;
    SharedFixedState().SaveImage = -1;
    EXPECT_TRUE(RunDumps::Configured().AreOn());
    EXPECT_TRUE(RunDumps::Fixed(fixed.dumpCounter).AreOn());
    EXPECT_EQ(RunDumps::Configured().WritePath(), configured.Wide(L"Dumps") + L"\\");
    EXPECT_EQ(RunDumps::Fixed(fixed.dumpCounter).WritePath(), fixed.Wide(L"Dumps") + L"\\");
}

}  // namespace
}  // namespace vastrelline
