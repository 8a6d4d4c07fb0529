// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

#include "config/ConfiguredState.h"
#include "stages/pre_processing/PreProcessingStage.h"
#include "support/ConfiguredRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int32_t kTwelveBits = 4095;

TEST(PreProcessingStage, DumpsAndWritesNoLogLine) {
    ConfiguredRun run;
    run.WriteProfile("[Molar]\r\n07_PREPROCESSING_ENHANCESCALE=1\r\n");
    SharedConfiguredState().SaveLog = 1;
    SharedConfiguredState().SaveImage = 1;
    Frame frame = Impulse(4, 3, 1, 1, 300, 200);
    PreProcessingStage(frame.Data(), kTwelveBits, 4, 3, run.Log(), 7);
    EXPECT_THAT(frame, EqualsFrame(Flat(4, 3, 200)));
    EXPECT_THAT(run.DumpedNames(), ElementsAre("05_preprocessing.raw"));
    EXPECT_EQ(run.Dumped("05_preprocessing.raw").size(), 24U);
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
    EXPECT_EQ(run.LogText(), "");
}

TEST(PreProcessingStage, DumpsNothingWhileSavingIsOff) {
    ConfiguredRun run;
    run.WriteProfile("[Molar]\r\n");
    Frame frame = Flat(4, 3, 200);
    PreProcessingStage(frame.Data(), kTwelveBits, 4, 3, run.Log(), 7);
    EXPECT_THAT(run.DumpedNames(), IsEmpty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
}

}  // namespace
}  // namespace vastrelline
