// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

#include "config/FixedState.h"
#include "stages/inversion/InversionStage.h"
#include "support/FixedRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

class FixedInversionTest : public testing::Test {
protected:
    Frame Invert(Frame frame, int32_t mode, double ratio = 0.2) {
        run_.settings.INVERSE_INTENSITY = mode;
        run_.settings.INVERSE_LOGRATIO = ratio;
        RunFixedInversion(frame.Data(), frame.width, frame.height, frame.width * frame.height, 4095,
                          run_.dumpCounter, run_.Log(), run_.settings);
        return frame;
    }

    FixedRun run_;
};

TEST_F(FixedInversionTest, PlainModeInvertsTheFrameAndWrapsAboveTheTop) {
    EXPECT_THAT(Invert(FromRows({{0, 1, 2000, 4095, 4096}}), 1),
                EqualsFrame(FromRows({{4095, 4094, 2095, 0, 65535}})));
}

// Span 5, k = trunc(5 * ratio): 2, 0 and 2 again.
TEST_F(FixedInversionTest, LogarithmicModeIsTheTurnedLogCurve) {
    const Frame frame = FromRows({{10, 11, 12, 13, 14}});
    EXPECT_THAT(Invert(frame, 2, 0.5), EqualsFrame(FromRows({{15, 13, 12, 11, 10}})));
    EXPECT_THAT(Invert(frame, 2, 0.0), EqualsFrame(FromRows({{15, 15, 12, 11, 10}})));
    EXPECT_THAT(Invert(frame, 2, -0.5), EqualsFrame(FromRows({{15, 13, 12, 11, 10}})));
}

TEST_F(FixedInversionTest, ThereIsNoPowerModeNorAnyOther) {
    const Frame frame = FromRows({{0, 1, 4095, 65535}});
    for (const int32_t mode : {3, 0, 4, -1, INT_MAX, INT_MIN})
        EXPECT_THAT(Invert(frame, mode), EqualsFrame(frame)) << mode;
}

TEST_F(FixedInversionTest, EveryModeDumpsTheFrame) {
    SharedFixedState().SaveImage = 1;
    Invert(FromRows({{0, 4095}}), 1);
    Invert(FromRows({{1, 2}}), 3);
    EXPECT_EQ(run_.DumpedNames(),
              (std::vector<std::string>{"05_originalimage_invert.raw", "06_originalimage_invert.raw"}));
    EXPECT_EQ(run_.Dumped("05_originalimage_invert.raw"), std::string("\xFF\x0F\0\0", 4));
    EXPECT_EQ(run_.Dumped("06_originalimage_invert.raw"), std::string("\x01\0\x02\0", 4));
    EXPECT_EQ(run_.dumpCounter, 7);
}

TEST_F(FixedInversionTest, CurveFileHasNoNumber) {
    SharedFixedState().SaveImage = 1;
    Invert(FromRows({{10, 14}}), 2, 0.5);
    EXPECT_EQ(run_.DumpedNames(),
              (std::vector<std::string>{"05_originalimage_invert.raw", "InverseCurve.txt"}));
    EXPECT_EQ(run_.Dumped("InverseCurve.txt"), "10\t15\r\n11\t13\r\n12\t12\r\n13\t11\r\n14\t10\r\n");
    EXPECT_EQ(run_.Dumped("05_originalimage_invert.raw"), std::string("\x0F\0\x0A\0", 4));
}

TEST_F(FixedInversionTest, WithoutImageSavingNothingIsWrittenAndNoModeLogs) {
    run_.settings.SAVE_LOG = 1;
    run_.settings.SAVE_IMAGE = 1;  // the run's state decides on dumps, not the record
    for (const int32_t mode : {0, 1, 2, 3}) Invert(FromRows({{10, 12}}), mode);
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(run_.dumpCounter, 5);
    EXPECT_EQ(run_.LogText(), "");
}

// 5 * ln(i) / ln(5) is 0, 2.15, 3.41 and 4.31 for 1 to 4; level 0 counts as 0.
TEST_F(FixedInversionTest, LogCurveItselfNeedNotBeTurned) {
    Frame frame = FromRows({{10, 11, 12, 13, 14}});
    ApplyFixedLogCurve(frame.Data(), 5, 1, 0.0, 0);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{10, 10, 12, 13, 14}})));
}

}  // namespace
}  // namespace vastrelline
