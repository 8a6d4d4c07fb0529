// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfiguredState.h"
#include "operators/tile_equalise/ClaheFrame.h"
#include "stages/clahe/ClaheStage.h"
#include "support/ConfiguredRun.h"
#include "support/FixedRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

Frame Equalized(Frame frame, int32_t blockSize, int32_t bins, double maxSlope) {
    ClaheFrame(frame.Data(), frame.width, frame.height, kTwelveBits, blockSize, bins, maxSlope);
    return frame;
}

std::string RawBytes(const Frame& frame) {
    std::string bytes;
    for (const uint16_t pixel : frame.pixels) {
        bytes.push_back(static_cast<char>(pixel % 256));
        bytes.push_back(static_cast<char>(pixel / 256));
    }
    return bytes;
}

// All above the levels that count as dark, before and after.
Frame BrightNoise() {
    Frame frame = Noise(20, 12, 2000, 1);
    for (uint16_t& pixel : frame.pixels) pixel = static_cast<uint16_t>(pixel + 1600);
    return frame;
}

class ClaheStageTest : public testing::Test {
protected:
    // Runs the stage at position 7.
    Frame Run(Frame frame, std::string_view keys) {
        run_.WriteProfile("[Molar]\r\n" + std::string(keys));
        RunClaheStage(frame.Data(), frame.width, frame.height, -1, kTwelveBits, run_.Log(), 7);
        return frame;
    }

    ConfiguredRun run_;
};

TEST_F(ClaheStageTest, KeysOfItsPositionAreTaken) {
    const Frame frame = Noise(40, 30, kTwelveBits, 2);
    EXPECT_THAT(
        Run(frame,
            "07_BLOCK_SIZE=8\r\n07_HISTO_BINS=32\r\n07_MAX_SLOPE=2.5\r\n06_BLOCK_SIZE=9\r\nBLOCK_SIZE=9\r\n"),
        EqualsFrame(Equalized(frame, 8, 32, 2.5)));
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ("", run_.LogText());
    EXPECT_EQ(5, SharedConfiguredState().DumpNumber);
}

TEST_F(ClaheStageTest, DefaultsHoldWithoutKeys) {
    const Frame frame = Noise(70, 66, kTwelveBits, 3);
    EXPECT_THAT(Run(frame, ""), EqualsFrame(Equalized(frame, 64, 256, 1.5)));
}

TEST_F(ClaheStageTest, LogAndDumpAreWritten) {
    SharedConfiguredState().SaveLog = 1;
    SharedConfiguredState().SaveImage = 1;
    const Frame result =
        Run(Noise(20, 12, kTwelveBits, 4), "07_BLOCK_SIZE=4\r\n07_HISTO_BINS=16\r\n07_MAX_SLOPE=2.345\r\n");
    EXPECT_EQ(std::vector<std::string>{"05_clahe.raw"}, run_.DumpedNames());
    EXPECT_EQ(RawBytes(result), run_.Dumped("05_clahe.raw"));
    EXPECT_EQ(6, SharedConfiguredState().DumpNumber);
    EXPECT_EQ(
        "#### hh:mm:ss \t: CLAHE ( S.SSS sec )\r\n"
        "\t\t\t BlockSize       : 4\r\n"
        "\t\t\t HistogramBins   : 16\r\n"
        "\t\t\t CurveRatio      : 2.35\r\n",
        MaskTimes(run_.LogText()));
}

// A refusal shows nowhere but in the pixels.
TEST_F(ClaheStageTest, RefusedKeysAreLoggedAndDumpedAllTheSame) {
    SharedConfiguredState().SaveLog = 1;
    SharedConfiguredState().SaveImage = 1;
    const Frame frame = Noise(20, 12, kTwelveBits, 5);
    EXPECT_THAT(Run(frame, "07_BLOCK_SIZE=-3\r\n07_HISTO_BINS=-1\r\n07_MAX_SLOPE=1\r\n"), EqualsFrame(frame));
    EXPECT_EQ(RawBytes(frame), run_.Dumped("05_clahe.raw"));
    EXPECT_EQ(
        "#### hh:mm:ss \t: CLAHE ( S.SSS sec )\r\n"
        "\t\t\t BlockSize       : -3\r\n"
        "\t\t\t HistogramBins   : -1\r\n"
        "\t\t\t CurveRatio      : 1.00\r\n",
        MaskTimes(run_.LogText()));
}

class FixedClaheTest : public testing::Test {
protected:
    FixedClaheTest() {
        run_.settings.BLOCK_SIZE = 4;
        run_.settings.HISTO_BINS = 16;
        run_.settings.MAX_SLOPE = 2.0;
    }

    Frame Run(Frame frame, int32_t pixelCount) {
        RunClahe(frame.Data(), frame.width, frame.height, pixelCount, kTwelveBits, run_.dumpCounter,
                 run_.Log(), run_.settings);
        return frame;
    }

    FixedRun run_;
};

TEST_F(FixedClaheTest, SettingsAreTaken) {
    const Frame frame = BrightNoise();
    EXPECT_THAT(Run(frame, 20 * 12), EqualsFrame(Equalized(frame, 4, 16, 2.0)));
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ("", run_.LogText());
    EXPECT_EQ(5, run_.dumpCounter);
}

TEST_F(FixedClaheTest, DarkFrameComesBackOnlyWithTheCorrection) {
    const Frame frame = Noise(20, 12, 1400, 6);
    EXPECT_THAT(Run(frame, 20 * 12), EqualsFrame(frame));
    run_.settings.CORRECTVAL = 0;
    EXPECT_THAT(Run(frame, 20 * 12), EqualsFrame(Equalized(frame, 4, 16, 2.0)));
}

// What was not copied before counts as 0.
TEST_F(FixedClaheTest, PixelCountBoundsTheCopy) {
    const Frame frame = Noise(20, 12, 1400, 7);
    Frame firstRow(20, 12);
    std::copy_n(frame.pixels.begin(), 20, firstRow.pixels.begin());
    EXPECT_THAT(Run(frame, 20), EqualsFrame(firstRow));
    EXPECT_THAT(Run(frame, -1), EqualsFrame(Flat(20, 12, 0)));
    EXPECT_THAT(Run(frame, INT32_MAX), EqualsFrame(frame));
}

TEST_F(FixedClaheTest, LogAndThreeDumpsOfOneNumberAreWritten) {
    run_.settings.SAVE_LOG = 1;
    SharedFixedState().SaveImage = 1;
    const Frame frame = Noise(20, 12, 1400, 8);
    const Frame result = Run(frame, 20 * 12);
    EXPECT_EQ((std::vector<std::string>{"05_clahe.raw", "05_clahe_00.raw", "05_clahe_01.raw"}),
              run_.DumpedNames());
    EXPECT_EQ(RawBytes(frame), run_.Dumped("05_clahe_00.raw"));
    EXPECT_EQ(RawBytes(Equalized(frame, 4, 16, 2.0)), run_.Dumped("05_clahe_01.raw"));
    EXPECT_EQ(RawBytes(result), run_.Dumped("05_clahe.raw"));
    EXPECT_EQ(6, run_.dumpCounter);
    EXPECT_EQ(
        "#### hh:mm:ss \t: CLAHE ( N ms )\r\n"
        "\t\t\t BlockSize       : 4\r\n"
        "\t\t\t HistogramBins   : 16\r\n"
        "\t\t\t CurveRatio      : 2.00\r\n",
        MaskTimes(run_.LogText()));
}

}  // namespace
}  // namespace vastrelline
