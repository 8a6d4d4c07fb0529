// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfiguredState.h"
#include "stages/gamma/GammaStage.h"
#include "support/ConfiguredRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class GammaStageTest : public testing::Test {
protected:
    // Runs the stage at position 7.
    Frame Run(Frame frame, std::string_view profile, int32_t maxValue = 4095) {
        run_.WriteProfile(profile);
        RunGammaStage(frame.Data(), frame.width, frame.height, maxValue, run_.Log(), 7);
        return frame;
    }

    std::string Log() { return run_.LogText(); }
    std::vector<std::string> DumpedNames() const { return run_.DumpedNames(); }
    std::string Dumped(const char* name) const { return run_.Dumped(name); }
    std::wstring Wide(std::wstring_view name) const { return run_.Wide(name); }
    void CloseLog() { run_.Log().Close(); }

private:
    ConfiguredRun run_;
};

constexpr std::string_view kSquareTo101 = "[Molar]\r\nOUTPUTRANGE=101\r\n07_POST_GAMMA_RATIO=2\r\n";

TEST_F(GammaStageTest, MapsTheFrameByTheKeyOfItsPosition) {
    // 101 * {0, 0.25, 0.5, 0.75, 1}^2; the exponents of other positions are no matter.
    constexpr std::string_view kProfile =
        "[Molar]\r\nOUTPUTRANGE=101\r\n00_POST_GAMMA_RATIO=1\r\n07_POST_GAMMA_RATIO=2\r\n"
        "08_POST_GAMMA_RATIO=1\r\nPOST_GAMMA_RATIO=1\r\n";
    EXPECT_THAT(Run(FromRows({{10, 11, 12, 13, 14}}), kProfile),
                EqualsFrame(FromRows({{0, 6, 25, 56, 101}})));
}

TEST_F(GammaStageTest, RatioOfExactlyOneIsAStraightStretch) {
    EXPECT_THAT(Run(FromRows({{10, 11}, {12, 14}}), "[Molar]\nOUTPUTRANGE=101\n07_POST_GAMMA_RATIO=1\n"),
                EqualsFrame(FromRows({{0, 25}, {50, 101}})));
}

TEST_F(GammaStageTest, RatioOfMinusTwoIsTheMirroredRoot) {
    EXPECT_THAT(Run(FromRows({{10, 11}, {12, 14}}), "[Molar]\nOUTPUTRANGE=101\n07_POST_GAMMA_RATIO=-2\n"),
                EqualsFrame(FromRows({{0, 13}, {29, 101}})));
}

// From the top down more than half of the three pixels are met at 2000, below half of the range: exponent 1.
TEST_F(GammaStageTest, SectionWithoutALineMeansTheDefaults) {
    for (const char* profile : {"", "[Other]\r\nOUTPUTRANGE=7\r\n[Molar]\r\n"}) {
        EXPECT_THAT(Run(FromRows({{1000, 2000, 3000}}), profile), EqualsFrame(FromRows({{0, 2047, 4095}})))
            << profile;
    }
}

TEST_F(GammaStageTest, RatioBelowOneJudgesTheFrame) {
    // Half of four pixels: the third-brightest, 6 of 8, gives the exponent 1.5. x is 0, 0.625, 0.75, 1, so
    // 8 * x^1.5 is 0, 3.95, 5.20, 8.
    constexpr std::string_view kProfile = "[Molar]\nOUTPUTRANGE=8\n07_POST_GAMMA_RATIO=0.5\n";
    EXPECT_THAT(Run(FromRows({{0, 8}, {7, 6}}), kProfile, 8), EqualsFrame(FromRows({{0, 8}, {6, 5}})));
}

TEST_F(GammaStageTest, MissingKeysGiveHalfOfThePixelsAnd4095) {
    // The third-brightest of four pixels is 4095 itself, so the exponent is 2: 4095 * (1000 / 4095)^2.
    EXPECT_THAT(Run(FromRows({{0, 4095}, {4095, 4095}}), "[Molar]\nCAPTION=x\n"),
                EqualsFrame(FromRows({{0, 4095}, {4095, 4095}})));
    EXPECT_THAT(Run(FromRows({{0, 1000}, {4095, 4095}, {4095, 4095}}), "[Molar]\nCAPTION=x\n"),
                EqualsFrame(FromRows({{0, 244}, {4095, 4095}, {4095, 4095}})));
}

TEST_F(GammaStageTest, OneLevelFrameBecomesZero) {
    EXPECT_THAT(Run(Flat(3, 2, 700), kSquareTo101), EqualsFrame(Flat(3, 2, 0)));
}

TEST_F(GammaStageTest, LogsTimeAndExponent) {
    SharedConfiguredState().SaveLog = 1;
    Run(FromRows({{10, 14}}), kSquareTo101);
    EXPECT_EQ(MaskTimes(Log()),
              "#### hh:mm:ss \t: Gamma Curve ( S.SSS sec )\r\n"
              "\t\t\t Gamma : 2.00\r\n");
}

TEST_F(GammaStageTest, LogsTheExponentThatItDerived) {
    SharedConfiguredState().SaveLog = 1;
    Run(FromRows({{0, 8}, {7, 6}}), "[Molar]\nOUTPUTRANGE=8\n07_POST_GAMMA_RATIO=0.25\n", 8);
    Run(FromRows({{0, 8}, {7, 6}}), "[Molar]\nOUTPUTRANGE=8\n07_POST_GAMMA_RATIO=-12.346\n", 8);
    EXPECT_EQ(MaskTimes(Log()),
              "#### hh:mm:ss \t: Gamma Curve ( S.SSS sec )\r\n"
              "\t\t\t Gamma : 1.75\r\n"
              "#### hh:mm:ss \t: Gamma Curve ( S.SSS sec )\r\n"
              "\t\t\t Gamma : -12.35\r\n");
}

TEST_F(GammaStageTest, LeavesNoTraceWithItsSwitchesOff) {
    Run(FromRows({{10, 14}}), kSquareTo101);
    EXPECT_EQ(Log(), "");
    EXPECT_TRUE(DumpedNames().empty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
}

TEST_F(GammaStageTest, SwitchesComeFromTheRunAndNotFromTheProfile) {
    Run(FromRows({{10, 14}}), "[Molar]\nSAVE_IMAGE=1\nSAVE_LOG=1\nOUTPUTRANGE=101\n07_POST_GAMMA_RATIO=2\n");
    EXPECT_EQ(Log(), "");
    EXPECT_TRUE(DumpedNames().empty());
}

TEST_F(GammaStageTest, CurveFileAndDumpShareOneNumber) {
    SharedConfiguredState().SaveImage = 1;
    Run(FromRows({{10, 11, 12}, {13, 14, 14}}), kSquareTo101);
    // The folder keeps its capitals; the dump's own name does not, the curve file's does.
    EXPECT_EQ(DumpedNames(), (std::vector<std::string>{"05_GammaCurve.txt", "05_result_gamma.raw"}));
    EXPECT_EQ(Dumped("05_GammaCurve.txt"), "10\t0\r\n11\t6\r\n12\t25\r\n13\t56\r\n14\t101\r\n");
    // Pixels 0, 6, 25, 56, 101, 101, each with its low byte first.
    EXPECT_EQ(Dumped("05_result_gamma.raw"), std::string("\x00\0\x06\0\x19\0\x38\0\x65\0\x65\0", 12));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
}

TEST_F(GammaStageTest, NumbersRiseFromStageToStageAndPast99) {
    SharedConfiguredState().SaveImage = 1;
    SharedConfiguredState().DumpNumber = 99;
    Run(FromRows({{10, 14}}), kSquareTo101);
    Run(FromRows({{10, 14}}), kSquareTo101);
    EXPECT_EQ(DumpedNames(), (std::vector<std::string>{"100_GammaCurve.txt", "100_result_gamma.raw",
                                                       "99_GammaCurve.txt", "99_result_gamma.raw"}));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 101);
}

TEST_F(GammaStageTest, DumpThatCannotBeWrittenChangesNoPixelAndTakesItsNumber) {
    SharedConfiguredState().SaveImage = 1;
    SharedConfiguredState().WritePath = Wide(L"missing") + L"\\";
    EXPECT_THAT(Run(FromRows({{10, 12, 14}}), kSquareTo101), EqualsFrame(FromRows({{0, 25, 101}})));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
}

TEST_F(GammaStageTest, ClosedLogIsNoObstacle) {
    SharedConfiguredState().SaveLog = 1;
    CloseLog();
    EXPECT_THAT(Run(FromRows({{10, 12, 14}}), kSquareTo101), EqualsFrame(FromRows({{0, 25, 101}})));
    EXPECT_EQ(Log(), "");
}

TEST(ApplyGammaCurve, MapsEachPixelAndThoseAboveTheTableToItsEnd) {
    // The range runs from 10 to 30, so that the last level, 20, stands for x = 0.5.
    Frame frame = FromRows({{10, 30, 20, 15}});
    ApplyGammaCurve(frame.Data(), 4, 1, 20, 101, 1.0, 0, 0, 0, L"", 0);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{0, 50, 50, 25}})));
}

TEST(ApplyGammaCurve, InvertsTheCurveWithinItsLimit) {
    // Levels 5 and 9 alone occur more than twice.
    Frame frame = FromRows({{2, 5, 9, 12}, {5, 9, 5, 9}});
    ApplyGammaCurve(frame.Data(), 4, 2, 13, 101, 1.0, 2, 1, 0, L"", 0);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{0, 101, 0, 101}, {101, 0, 101, 0}})));
}

TEST(ApplyGammaCurve, FrameWithoutPixelsIsNoWork) {
    Frame frame(0, 4);
    ApplyGammaCurve(frame.Data(), 0, 4, 3, 101, 2.0, 0, 0, 0, L"", 0);
    EXPECT_THAT(frame, EqualsFrame(Frame(0, 4)));
}

TEST(ApplyGammaCurve, CurveFileHoldsTheCurveBetweenTheFramesEnds) {
    const TemporaryFolder folder;
    Frame frame = FromRows({{10, 12}, {14, 12}});
    ApplyGammaCurve(frame.Data(), 2, 2, 15, 101, 2.0, 0, 0, 1, folder.Wide(L"Run_"), 7);
    EXPECT_EQ(ReadBytes(folder.Path() / "Run_07_GammaCurve.txt"),
              "10\t0\r\n11\t6\r\n12\t25\r\n13\t56\r\n14\t101\r\n");
    EXPECT_THAT(frame, EqualsFrame(FromRows({{0, 25}, {101, 25}})));
}

TEST(ApplyGammaCurve, CurveFileEndsWithTheTable) {
    const TemporaryFolder folder;
    Frame frame = FromRows({{10, 30}});
    ApplyGammaCurve(frame.Data(), 2, 1, 12, 101, 1.0, 0, 0, 1, folder.Wide(L""), 100);
    // 101 * {0, 0.05, 0.1}
    EXPECT_EQ(ReadBytes(folder.Path() / "100_GammaCurve.txt"), "10\t0\r\n11\t5\r\n12\t10\r\n");
}

TEST(ApplyGammaCurve, NoCurveFileUnlessAskedFor) {
    const TemporaryFolder folder;
    Frame frame = FromRows({{10, 14}});
    ApplyGammaCurve(frame.Data(), 2, 1, 15, 101, 2.0, 0, 0, 0, folder.Wide(L""), 7);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(ApplyGammaCurve, CurveFileThatCannotBeMadeIsSkipped) {
    const TemporaryFolder folder;
    Frame frame = FromRows({{10, 12, 14}});
    const std::wstring missing = folder.Wide(L"missing") + L"\\";
    ApplyGammaCurve(frame.Data(), 3, 1, 15, 101, 2.0, 0, 0, 1, missing, 7);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{0, 25, 101}})));
}

}  // namespace
}  // namespace vastrelline
