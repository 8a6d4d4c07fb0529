// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "config/CommonSettings.h"
#include "config/ConfiguredState.h"
#include "stages/inversion/InversionStage.h"
#include "support/ConfiguredRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

constexpr int32_t kNoInversion = 0;
constexpr int32_t kPlain = 1;
constexpr int32_t kLogarithm = 2;
constexpr int32_t kPower = 3;

class InversionStageTest : public testing::Test {
protected:
    Frame Invert(Frame frame, int32_t mode, double ratio = 0.2, int32_t maxValue = 4095) {
        CommonSettings settings;
        settings.INVERSE_INTENSITY = mode;
        settings.INVERSE_LOGRATIO = ratio;
        RunInversion(frame.Data(), frame.width, frame.height, frame.width * frame.height, maxValue,
                     run_.Log(), settings);
        return frame;
    }
    ConfiguredRun& Run() { return run_; }

private:
    ConfiguredRun run_;
};

TEST_F(InversionStageTest, PlainModeInvertsTheFrame) {
    EXPECT_THAT(Invert(FromRows({{0, 1}, {2000, 4095}}), kPlain),
                EqualsFrame(FromRows({{4095, 4094}, {2095, 0}})));
    EXPECT_THAT(Invert(FromRows({{0, 300, 65535}}), kPlain, 0.2, 65535),
                EqualsFrame(FromRows({{65535, 65235, 0}})));
}

// 4095 - 4096 is -1, 4095 - 5000 is -905.
TEST_F(InversionStageTest, PlainModeWrapsAboveTheTop) {
    EXPECT_THAT(Invert(FromRows({{4096, 5000, 65535}}), kPlain),
                EqualsFrame(FromRows({{65535, 64631, 4096}})));
}

TEST_F(InversionStageTest, PlainModeTakesNoNoticeOfTheRatio) {
    EXPECT_THAT(Invert(FromRows({{0, 1000}}), kPlain, 1e300), EqualsFrame(FromRows({{4095, 3095}})));
}

// Span 5, k = trunc(5 * ratio): 2, 0 and 2 again.
TEST_F(InversionStageTest, LogarithmicModeIsTheTurnedLogCurve) {
    const Frame frame = FromRows({{10, 11, 12, 13, 14}});
    EXPECT_THAT(Invert(frame, kLogarithm, 0.5), EqualsFrame(FromRows({{15, 13, 12, 11, 10}})));
    EXPECT_THAT(Invert(frame, kLogarithm, 0.0), EqualsFrame(FromRows({{15, 15, 12, 11, 10}})));
    EXPECT_THAT(Invert(frame, kLogarithm, -0.5), EqualsFrame(FromRows({{15, 13, 12, 11, 10}})));
}

// x is 0, 1/4, 1/2, 1 of the frame's own range 10..14; the ratio is the exponent.
// 0.2: 4 * x^0.2 is 0, 3.03, 3.48, 4.  2: 0, 0.25, 1, 4.  -2: 4 - 4 * sqrt(1 - x) is 0, 0.54, 1.17, 4.
TEST_F(InversionStageTest, PowerModeTurnsWithinTheFramesOwnRange) {
    const Frame frame = FromRows({{10, 11, 12, 14}});
    EXPECT_THAT(Invert(frame, kPower, 0.2), EqualsFrame(FromRows({{14, 10, 10, 10}})));
    EXPECT_THAT(Invert(frame, kPower, 2), EqualsFrame(FromRows({{14, 13, 13, 10}})));
    EXPECT_THAT(Invert(frame, kPower, -2), EqualsFrame(FromRows({{14, 13, 12, 10}})));
}

TEST_F(InversionStageTest, OneLevel) {
    EXPECT_THAT(Invert(Flat(2, 2, 700), kPlain), EqualsFrame(Flat(2, 2, 3395)));
    EXPECT_THAT(Invert(Flat(2, 2, 700), kLogarithm), EqualsFrame(Flat(2, 2, 701)));
    EXPECT_THAT(Invert(Flat(2, 2, 700), kPower), EqualsFrame(Flat(2, 2, 0)));
}

TEST_F(InversionStageTest, AnyOtherModeLeavesThePixels) {
    const Frame frame = FromRows({{0, 1, 4095, 65535}});
    for (const int32_t mode : {kNoInversion, 4, -1, -3, INT_MAX, INT_MIN}) {
        EXPECT_THAT(Invert(frame, mode), EqualsFrame(frame)) << mode;
    }
}

TEST_F(InversionStageTest, WithoutImageSavingNothingIsWritten) {
    for (const int32_t mode : {kNoInversion, kPlain, kLogarithm, kPower}) Invert(FromRows({{10, 12}}), mode);
    EXPECT_TRUE(Run().DumpedNames().empty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
}

TEST_F(InversionStageTest, PlainModeDumpsTheResult) {
    SharedConfiguredState().SaveImage = 1;
    Invert(FromRows({{0, 4095}}), kPlain);
    EXPECT_EQ(Run().DumpedNames(), (std::vector<std::string>{"05_originalimage_invert.raw"}));
    EXPECT_EQ(Run().Dumped("05_originalimage_invert.raw"), std::string("\xFF\x0F\0\0", 4));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
}

TEST_F(InversionStageTest, UnknownModeDumpsTheFrameAsItIs) {
    SharedConfiguredState().SaveImage = 1;
    Invert(FromRows({{1, 2}}), 9);
    EXPECT_EQ(Run().Dumped("05_originalimage_invert.raw"), std::string("\x01\0\x02\0", 4));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
}

TEST_F(InversionStageTest, CurveFileAndDumpShareOneNumber) {
    SharedConfiguredState().SaveImage = 1;
    Invert(FromRows({{10, 14}}), kLogarithm, 0.5);
    Invert(FromRows({{10, 14}}), kPower, 2);
    EXPECT_EQ(Run().DumpedNames(),
              (std::vector<std::string>{"05_LogCurve.txt", "05_originalimage_invert.raw", "06_GammaCurve.txt",
                                        "06_originalimage_invert.raw"}));
    EXPECT_EQ(Run().Dumped("05_LogCurve.txt"), "10\t15\r\n11\t13\r\n12\t12\r\n13\t11\r\n14\t10\r\n");
    EXPECT_EQ(Run().Dumped("05_originalimage_invert.raw"), std::string("\x0F\0\x0A\0", 4));
    // x^2 of 0, 1/4, 1/2, 3/4, 1 takes 0, 0.25, 1, 2.25, 4 off 14.
    EXPECT_EQ(Run().Dumped("06_GammaCurve.txt"), "10\t14\r\n11\t13\r\n12\t13\r\n13\t11\r\n14\t10\r\n");
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 7);
}

TEST_F(InversionStageTest, DumpThatCannotBeWrittenTakesItsNumber) {
    SharedConfiguredState().SaveImage = 1;
    SharedConfiguredState().WritePath = Run().Wide(L"missing") + L"\\";
    EXPECT_THAT(Invert(FromRows({{10, 14}}), kLogarithm, 0.5), EqualsFrame(FromRows({{15, 10}})));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
}

TEST_F(InversionStageTest, WritesNoLogLine) {
    SharedConfiguredState().SaveLog = 1;
    for (const int32_t mode : {kNoInversion, kPlain, kLogarithm, kPower}) Invert(FromRows({{10, 12}}), mode);
    EXPECT_EQ(Run().LogText(), "");
}

TEST(ApplyLogCurve, FrameWithoutPixelsIsNoWork) {
    const TemporaryFolder folder;
    ApplyLogCurve(nullptr, 0, 5, 0.2, 1, 1, folder.Wide(L""), 7);
    EXPECT_EQ(ReadBytes(folder.Path() / "07_LogCurve.txt"), "");
}

TEST(ApplyLogCurve, NeedNotInvertTheFrame) {
    // Span 5 and k = 2: 5 * log((i + 2) / 2) / log(7 / 2) is 0, 1.618, 2.766, 3.657, 4.385.
    Frame frame = FromRows({{10, 11, 12, 13, 14}});
    ApplyLogCurve(frame.Data(), 5, 1, 0.5, 0, 0, L"", 0);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{10, 11, 12, 13, 14}})));
}

TEST(ApplyLogCurve, FileListsEveryLevelOfTheSpan) {
    const TemporaryFolder folder;
    Frame frame = FromRows({{14, 10}});
    // The path is joined as it stands.
    ApplyLogCurve(frame.Data(), 2, 1, 0.5, 1, 1, folder.Wide(L"Curve"), 7);
    EXPECT_EQ(ReadBytes(folder.Path() / "Curve07_LogCurve.txt"),
              "10\t15\r\n11\t13\r\n12\t12\r\n13\t11\r\n14\t10\r\n");
    EXPECT_THAT(frame, EqualsFrame(FromRows({{10, 15}})));
}

TEST(ApplyLogCurve, FileIsMadeAfreshAndItsNumberMayHaveThreeDigits) {
    const TemporaryFolder folder;
    for (const uint16_t level : {uint16_t{1000}, uint16_t{7}}) {
        Frame frame = Flat(1, 1, level);
        ApplyLogCurve(frame.Data(), 1, 1, 0.2, 1, -1, folder.Wide(L""), 123);
    }
    EXPECT_EQ(ReadBytes(folder.Path() / "123_LogCurve.txt"), "7\t8\r\n");
}

TEST(ApplyLogCurve, FileThatCannotBeMadeChangesNoPixel) {
    const TemporaryFolder folder;
    Frame frame = FromRows({{10, 12, 14}});
    ApplyLogCurve(frame.Data(), 3, 1, 0.5, 1, 1, folder.Wide(L"missing") + L"\\", 7);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{15, 12, 10}})));
}

TEST(ApplyLogCurve, WithoutTheSwitchNoFileIsMade) {
    const TemporaryFolder folder;
    Frame frame = FromRows({{10, 12, 14}});
    ApplyLogCurve(frame.Data(), 3, 1, 0.5, 1, 0, folder.Wide(L""), 7);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

}  // namespace
}  // namespace vastrelline
