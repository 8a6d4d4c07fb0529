// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "stages/pyramid/Pyramid.h"
#include "stages/pyramid/PyramidStage.h"
#include "support/ConfiguredRun.h"
#include "support/FixedRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

Frame Enhanced(Frame frame, const PyramidParams& params, const PyramidForm& form) {
    TonedFrame toned({frame.Data(), frame.width, frame.height});
    PyramidProcess(toned, kTwelveBits, BandCurve::Power, params, form, nullptr);
    return frame;
}

class PyramidStageTest : public testing::Test {
protected:
    // Runs the stage at position 7.
    Frame Run(Frame frame, std::string_view keys) {
        run_.WriteProfile("[Molar]\r\n" + std::string(keys));
        TonedFrame toned({frame.Data(), frame.width, frame.height});
        PyramidStage(toned, kTwelveBits, run_.Log(), 7);
        return frame;
    }

    ConfiguredRun run_;
};

class PyramidStageFixedTest : public testing::Test {
protected:
    Frame Run(Frame frame) {
        TonedFrame toned({frame.Data(), frame.width, frame.height});
        PyramidStageFixed(toned, kTwelveBits, run_.dumpCounter, run_.Log(), run_.settings);
        return frame;
    }

    FixedRun run_;
};

// Padded to 4 x 4, and with a sigma whose kernel is 0, 1, 0, its band is the frame itself: twelve times 0 and
// four times 30, with a noise limit of 5.
const Frame kPeak = FromRows({{0, 30, 0}});
constexpr std::string_view kPeakKeys = "07_PYRAMID_LAYER=2\r\n07_GAUSSIAN_SIZE=0.02\r\n";

// The dump of 4 x 4 pixels of which each row is 0, `second`, 0, 0.
std::string DumpOfRows(char second) {
    std::string dump;
    for (int row = 0; row < 4; ++row) dump += std::string("\0\0", 2) + second + std::string("\0\0\0\0\0", 5);
    return dump;
}

// Lines "v\tv" from 5 to 30, or "v\t0".
std::string TailLines(bool passes) {
    std::string lines;
    for (int v = 5; v <= 30; ++v) lines += std::to_string(v) + "\t" + std::to_string(passes ? v : 0) + "\r\n";
    return lines;
}

const std::vector<std::string> kPeakDumps = {"05_pyramid.raw",
                                             "EnhancedSlope_0.txt",
                                             "diff1_0.raw",
                                             "diff2_0.raw",
                                             "enhancedlaplacian0_4x4.raw",
                                             "enhancedsum0_4x4.raw",
                                             "laplacian0_4x4.raw",
                                             "pyramidproc_00_originalexp_4x4.raw",
                                             "pyramidproc_gaussian0_4x4.raw"};

TEST_F(PyramidStageTest, MissingKeysMeanTheDefaults) {
    const Frame frame = Noise(40, 25, 4095, 1);
    const PyramidParams params = {3, 1.0, 0, 1.5, 0.7, 1, 0.01};
    EXPECT_THAT(Run(frame, "PYRAMID_LAYER=2\r\n06_ENHANCED_RATIO=9\r\n"),
                EqualsFrame(Enhanced(frame, params, {TailMode::Pass, true})));
}

TEST_F(PyramidStageTest, ReadsAllKeysOfItsPosition) {
    const Frame frame = Noise(40, 25, 4095, 1);
    EXPECT_THAT(Run(frame,
                    "07_PYRAMID_LAYER=4\r\n07_GAUSSIAN_SIZE=0.8\r\n07_APPLY_VARIABLE_RATIO=1\r\n"
                    "07_ENHANCED_RATIO=2.5\r\n07_NOISE_WIDTH=0.3\r\n07_NOISE_CUTLIMIT=0.6\r\n"),
                EqualsFrame(Enhanced(frame, {4, 0.8, 1, 2.5, 0.3, 1, 0.6}, {TailMode::Pass, true})));
    EXPECT_THAT(Run(frame, "07_APPLY_DIFF_ENHANCE=0\r\n"), EqualsFrame(frame));
}

TEST_F(PyramidStageTest, LogsTheKeysThatItUsed) {
    SharedConfiguredState().SaveLog = 1;
    Run(Flat(3, 3, 5), "");
    Run(Flat(3, 3, 5),
        "07_PYRAMID_LAYER=-2\r\n07_GAUSSIAN_SIZE=2.346\r\n07_ENHANCED_RATIO=12.5\r\n07_NOISE_WIDTH=-1\r\n");
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: pyramid ( S.SSS sec )\r\n"
              "\t\t\t Layer          : 3\r\n"
              "\t\t\t Sigma          : 1.00\r\n"
              "\t\t\t EnhancedRatio : 1.50\r\n"
              "\t\t\t NoiseWidth    : 0.70\r\n"
              "#### hh:mm:ss \t: pyramid ( S.SSS sec )\r\n"
              "\t\t\t Layer          : -2\r\n"
              "\t\t\t Sigma          : 2.35\r\n"
              "\t\t\t EnhancedRatio : 12.50\r\n"
              "\t\t\t NoiseWidth    : -1.00\r\n");
}

// The noise is trunc(5 * 0.7) = 3, the gain 1.5: 7.5 at the limit. Below 3 the line to 7.5 * 0.6^0.6 = 5.52;
// 7.5 * 0.8^0.6 is 6.56.
TEST_F(PyramidStageTest, SavesEveryStepAndTheResponse) {
    SharedConfiguredState().SaveImage = 1;
    EXPECT_THAT(Run(kPeak, kPeakKeys), EqualsFrame(kPeak));
    EXPECT_EQ(run_.DumpedNames(), kPeakDumps);
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
    EXPECT_EQ(run_.Dumped("05_pyramid.raw"), std::string("\0\0\x1E\0\0\0", 6));
    EXPECT_EQ(run_.Dumped("EnhancedSlope_0.txt"),
              "0\t0\r\n1\t1\r\n2\t3\r\n3\t5\r\n4\t6\r\n" + TailLines(true));
    for (const char* name : {"pyramidproc_00_originalexp_4x4.raw", "laplacian0_4x4.raw", "diff1_0.raw",
                             "diff2_0.raw", "enhancedlaplacian0_4x4.raw", "enhancedsum0_4x4.raw"}) {
        EXPECT_EQ(run_.Dumped(name), DumpOfRows('\x1E')) << name;
    }
    EXPECT_EQ(run_.Dumped("pyramidproc_gaussian0_4x4.raw"), DumpOfRows('\0'));
}

TEST_F(PyramidStageTest, IdleStageStillLogsAndDumps) {
    SharedConfiguredState().SaveImage = 1;
    SharedConfiguredState().SaveLog = 1;
    EXPECT_THAT(Run(kPeak, "07_PYRAMID_LAYER=0\r\n"), EqualsFrame(kPeak));
    EXPECT_EQ(run_.DumpedNames(), std::vector<std::string>{"05_pyramid.raw"});
    EXPECT_NE(run_.LogText().find("\t\t\t Layer          : 0\r\n"), std::string::npos);
}

TEST_F(PyramidStageTest, LeavesNoTraceWithItsSwitchesOff) {
    Run(kPeak, std::string(kPeakKeys) + "SAVE_IMAGE=1\r\nSAVE_LOG=1\r\n");
    EXPECT_EQ(run_.LogText(), "");
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
}

TEST_F(PyramidStageTest, FolderThatIsNotThereChangesNoPixel) {
    SharedConfiguredState().SaveImage = 1;
    SharedConfiguredState().WritePath = run_.Wide(L"missing") + L"\\";
    EXPECT_THAT(Run(kPeak, kPeakKeys), EqualsFrame(kPeak));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
}

TEST_F(PyramidStageTest, HostileKeysEndInAFrame) {
    for (const char* key : {"PYRAMID_LAYER", "GAUSSIAN_SIZE", "APPLY_VARIABLE_RATIO", "ENHANCED_RATIO",
                            "NOISE_WIDTH", "APPLY_DIFF_ENHANCE", "NOISE_CUTLIMIT"}) {
        for (const char* value : {"-2147483648", "2147483647", "nan", "inf", "1e308", "-1", ""}) {
            const Frame frame = Noise(13, 9, 4095, 11);
            const Frame result = Run(frame, "07_" + std::string(key) + "=" + value + "\r\n");
            for (const uint16_t pixel : result.pixels) ASSERT_LE(pixel, kTwelveBits) << key << '=' << value;
        }
    }
}

TEST_F(PyramidStageFixedTest, TakesTheSettingsWithTheNoiseWidthInPerCent) {
    const Frame frame = Noise(40, 25, 4095, 1);
    EXPECT_THAT(Run(frame), EqualsFrame(Enhanced(frame, {3, 1.0, 0, 1.5, 100 * 0.01, 1, 0.01},
                                                 {TailMode::Remove, false})));
    run_.settings.PYRAMID_LAYER = 4;
    run_.settings.GAUSSIAN_SIZE = 0.8;
    run_.settings.APPLY_VARIABLE_RATIO = 1;
    run_.settings.ENHANCED_RATIO = 2.5;
    run_.settings.NOISE_WIDTH = 30;
    run_.settings.NOISE_CUTLIMIT = 0.6;
    EXPECT_THAT(Run(frame),
                EqualsFrame(Enhanced(frame, {4, 0.8, 1, 2.5, 30 * 0.01, 1, 0.6}, {TailMode::Remove, false})));
    run_.settings.APPLY_DIFF_ENHANCE = 0;
    EXPECT_THAT(Run(frame),
                EqualsFrame(Enhanced(frame, {4, 0.8, 1, 2.5, 30 * 0.01, 0, 0.6}, {TailMode::Remove, false})));
}

TEST_F(PyramidStageFixedTest, LogsTheSettingsThatItUsed) {
    run_.settings.SAVE_LOG = 1;
    run_.settings.NOISE_WIDTH = -7;
    Run(Flat(3, 3, 5));
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: pyramid ( N ms )\r\n"
              "\t\t\t Layer          : 3\r\n"
              "\t\t\t Sigma          : 1.00\r\n"
              "\t\t\t dEnhancedRatio : 1.50\r\n"
              "\t\t\t nNoiseWidth    : -7\r\n");
}

// All of the limit 5 is noise: the line to 7.5. What is beyond goes, and with it the peak.
TEST_F(PyramidStageFixedTest, SavesEveryStepAndTheResponse) {
    SharedFixedState().SaveImage = 1;
    run_.settings.PYRAMID_LAYER = 2;
    run_.settings.GAUSSIAN_SIZE = 0.02;
    EXPECT_THAT(Run(kPeak), EqualsFrame(FromRows({{0, 0, 0}})));
    EXPECT_EQ(run_.DumpedNames(), kPeakDumps);
    EXPECT_EQ(run_.dumpCounter, 6);
    EXPECT_EQ(run_.Dumped("05_pyramid.raw"), std::string(6, '\0'));
    EXPECT_EQ(run_.Dumped("EnhancedSlope_0.txt"),
              "0\t0\r\n1\t1\r\n2\t3\r\n3\t4\r\n4\t6\r\n" + TailLines(false));
    EXPECT_EQ(run_.Dumped("diff1_0.raw"), DumpOfRows('\x1E'));
    EXPECT_EQ(run_.Dumped("diff2_0.raw"), DumpOfRows('\0'));
}

TEST_F(PyramidStageFixedTest, LeavesNoTraceWithItsSwitchesOff) {
    run_.settings.SAVE_IMAGE = 1;
    Run(kPeak);
    EXPECT_EQ(run_.LogText(), "");
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(run_.dumpCounter, 5);
}

}  // namespace
}  // namespace vastrelline
