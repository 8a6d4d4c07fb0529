// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfiguredState.h"
#include "operators/histogram/PixelRange.h"
#include "operators/tile_equalise/ClaheFrame.h"
#include "stages/hdr/HdrFrame.h"
#include "stages/hdr/HdrParams.h"
#include "stages/hdr/HdrStage.h"
#include "stages/hdr/LayerFusion.h"
#include "support/ConfiguredRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

// The stage by hand: the frame fused with a version that ClaheFrame equalised, or with itself at a slope
// of 1.
Frame FusedWithTiles(const Frame& frame, int32_t blockSize, double slope, float maxLambda = 0.9F) {
    Frame normal = frame;
    Frame hed = frame;
    if (slope != 1.0) ClaheFrame(hed.Data(), hed.width, hed.height, kTwelveBits, blockSize, 256, slope);
    EXPECT_EQ(FuseLayers(normal.Data(), hed.Data(), frame.width, frame.height,
                         MinPixel(frame.Data(), frame.width, frame.height),
                         MaxPixel(frame.Data(), frame.width, frame.height), 1, 1, maxLambda, 0.005F, 0.3F,
                         0.3F, 20),
              1);
    return normal;
}

// Soft enough that tiles have a shape of their own.
Frame MakeSoftFrame() {
    Frame frame = Noise(48, 52, 400, 12);
    for (int32_t y = 0; y < 52; ++y)
        for (int32_t x = 0; x < 48; ++x)
            frame.At(x, y) = static_cast<uint16_t>(frame.At(x, y) + 30 * x + 20 * y);
    return frame;
}

class HdrStageTest : public testing::Test {
protected:
    // Runs the stage at position 3.
    Frame Run(Frame frame, std::string_view keys) {
        run_.WriteProfile("[Molar]\r\n" + std::string(keys));
        RunHdrStage(frame.Data(), frame.width, frame.height, frame.width * frame.height, kTwelveBits,
                    run_.Log(), 3);
        return frame;
    }

    ConfiguredRun run_;
};

TEST_F(HdrStageTest, ReadsItsKeysByItsPosition) {
    run_.WriteProfile(
        "[Molar]\r\n03_HDR_BLOCK_SIZE=64\r\n03_HDR_HISTO_BINS=100\r\n03_HDR_CLIp_LIMIT=2.5\r\n"
        "03_MAX_LAMBDA=0.7\r\n03_WF_SLOPE=0.25\r\n03_ALPHA_NORM=0.1\r\n03_ALPHA_HE=0.2\r\n03_LAYER=7\r\n"
        "04_LAYER=8\r\nLAYER=9\r\n");
    const ConfiguredState& state = SharedConfiguredState();
    const HdrParams params = ReadHdrParams(state.IniPath, state.SectionName, 3);
    EXPECT_EQ(params.HDR_BLOCK_SIZE, 64);
    EXPECT_EQ(params.HDR_HISTO_BINS, 100);
    EXPECT_EQ(params.HDR_CLIp_LIMIT, 2.5);
    EXPECT_EQ(params.MAX_LAMBDA, 0.7F);
    EXPECT_EQ(params.WF_SLOPE, 0.25F);
    EXPECT_EQ(params.ALPHA_NORM, 0.1F);
    EXPECT_EQ(params.ALPHA_HE, 0.2F);
    EXPECT_EQ(params.LAYER, 7);
    const HdrParams missing = ReadHdrParams(state.IniPath, state.SectionName, 5);
    EXPECT_EQ(missing.HDR_BLOCK_SIZE, 128);
    EXPECT_EQ(missing.HDR_HISTO_BINS, 256);
    EXPECT_EQ(missing.HDR_CLIp_LIMIT, 1.375);
    EXPECT_EQ(missing.MAX_LAMBDA, 0.9F);
    EXPECT_EQ(missing.WF_SLOPE, 0.005F);
    EXPECT_EQ(missing.ALPHA_NORM, 0.3F);
    EXPECT_EQ(missing.ALPHA_HE, 0.3F);
    EXPECT_EQ(missing.LAYER, 20);
}

TEST_F(HdrStageTest, FusesTheFrameWithItsEqualisedVersion) {
    const Frame frame = MakeSoftFrame();
    const Frame fused = Run(frame, "03_HDR_BLOCK_SIZE=16\r\n");
    EXPECT_THAT(fused, EqualsFrame(FusedWithTiles(frame, 16, 1.375)));
    EXPECT_NE(fused, frame);
    EXPECT_NE(fused, FusedWithTiles(frame, 16, 1.0));
}

// One tile is refused by the equalisation: the frame is fused with itself, as at a slope of 1.
TEST_F(HdrStageTest, RefusedEqualisationFusesTheFrameWithItself) {
    const Frame frame = MakeSoftFrame();
    const Frame expected = FusedWithTiles(frame, 16, 1.0);
    EXPECT_THAT(Run(frame, "03_HDR_BLOCK_SIZE=16\r\n03_HDR_CLIp_LIMIT=1\r\n"), EqualsFrame(expected));
    EXPECT_THAT(Run(frame, "03_HDR_BLOCK_SIZE=500\r\n"), EqualsFrame(expected));
}

TEST_F(HdrStageTest, SlopeAndLayerGiveOnePictureAndTheirOwnLog) {
    SharedConfiguredState().SaveLog = 1;
    const Frame frame = MakeSoftFrame();
    const Frame expected = Run(frame, "03_HDR_BLOCK_SIZE=16\r\n");
    EXPECT_THAT(Run(frame, "03_HDR_BLOCK_SIZE=16\r\n03_WF_SLOPE=-2.5\r\n03_LAYER=-1\r\n"),
                EqualsFrame(expected));
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: HDR ( S.SSS sec )\r\n"
              "\t\t\t BlockSize       : 16\r\n"
              "\t\t\t HistogramBins   : 256\r\n"
              "\t\t\t CurveRatio      : 1.38\r\n"
              "\t\t\t Maximum of edge enhancement       : 1\r\n"
              "\t\t\t Edge enhance offset   : 1\r\n"
              "\t\t\t Improv Calc. speed for higher layer   : 20\r\n"
              "\t\t\t Maximum of contrast enhancement      : 0.90\r\n"
              "\t\t\t Adjust slope of wf      : 0.00\r\n"
              "\t\t\t Fraction of normal Image      : 0.30\r\n"
              "\t\t\t Fraction of hed Image      : 0.30\r\n"
              "#### hh:mm:ss \t: HDR ( S.SSS sec )\r\n"
              "\t\t\t BlockSize       : 16\r\n"
              "\t\t\t HistogramBins   : 256\r\n"
              "\t\t\t CurveRatio      : 1.38\r\n"
              "\t\t\t Maximum of edge enhancement       : 1\r\n"
              "\t\t\t Edge enhance offset   : 1\r\n"
              "\t\t\t Improv Calc. speed for higher layer   : -1\r\n"
              "\t\t\t Maximum of contrast enhancement      : 0.90\r\n"
              "\t\t\t Adjust slope of wf      : -2.50\r\n"
              "\t\t\t Fraction of normal Image      : 0.30\r\n"
              "\t\t\t Fraction of hed Image      : 0.30\r\n");
}

TEST_F(HdrStageTest, ZeroSwitchesTheEffectOff) {
    const Frame frame = MakeSoftFrame();
    // The last one is 0 in the single precision that it is kept in.
    for (const char* key : {"03_MAX_LAMBDA=0\r\n", "03_WF_SLOPE=0\r\n", "03_LAYER=0\r\n",
                            "03_ALPHA_NORM=0\r\n", "03_ALPHA_HE=0\r\n", "03_ALPHA_HE=1e-60\r\n"})
        EXPECT_THAT(Run(frame, std::string("03_HDR_BLOCK_SIZE=16\r\n") + key), EqualsFrame(frame)) << key;
}

TEST(HdrFrame, HostileBlocksLeaveTheFrame) {
    for (const int32_t blockSize : {0, -1, INT_MIN, INT_MAX, 1 << 29, 40000}) {
        Frame frame = MakeSoftFrame();
        EXPECT_EQ(
            HdrFrame(frame.Data(), 48, 52, kTwelveBits, blockSize, 256, 1.375, 1, 1, 0.9F, 1, 0.3F, 0.3F, 1),
            1);
        EXPECT_THAT(frame, EqualsFrame(MakeSoftFrame())) << blockSize;
    }
}

TEST(HdrFrame, HostileBinsAndSlopesStayInTheRange) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    for (const int32_t bins : {0, 1, -1, INT_MIN, INT_MAX, 256}) {
        for (const double slope : {none, 1e308, -1e308, 0.0, 1.375}) {
            Frame frame = MakeSoftFrame();
            const int32_t min = MinPixel(frame.Data(), 48, 52);
            const int32_t max = MaxPixel(frame.Data(), 48, 52);
            HdrFrame(frame.Data(), 48, 52, kTwelveBits, 13, bins, slope, 1, 1, 0.9F, 1, 0.3F, 0.3F, 1);
            EXPECT_GE(MinPixel(frame.Data(), 48, 52), min);
            EXPECT_LE(MaxPixel(frame.Data(), 48, 52), max);
        }
    }
}

TEST(HdrFrame, SmallAndFlatFramesComeOutAsTheyWere) {
    for (const auto& [width, height] : {std::pair{0, 0}, std::pair{1, 1}, std::pair{2, 2}, std::pair{1, 90},
                                        std::pair{90, 1}, std::pair{29, 29}}) {
        const Frame before = Noise(width, height, 4095, 4);
        Frame frame = before;
        HdrFrame(frame.Data(), width, height, kTwelveBits, 8, 256, 1.375, 1, 1, 0.9F, 1, 0.3F, 0.3F, 1);
        EXPECT_THAT(frame, EqualsFrame(before));
    }
    for (const uint16_t level : {uint16_t{0}, uint16_t{4095}}) {
        Frame frame = Flat(40, 44, level);
        HdrFrame(frame.Data(), 40, 44, kTwelveBits, 8, 256, 1.375, 1, 1, 0.9F, 1, 0.3F, 0.3F, 1);
        EXPECT_THAT(frame, EqualsFrame(Flat(40, 44, level)));
    }
}

TEST_F(HdrStageTest, DumpsTheFrameUnderTheRunningNumber) {
    SharedConfiguredState().SaveImage = 1;
    Run(FromRows({{1, 2}, {300, 4095}}), "");
    EXPECT_EQ(run_.DumpedNames(), std::vector<std::string>{"05_hdr.raw"});
    EXPECT_EQ(run_.Dumped("05_hdr.raw"), std::string("\x01\0\x02\0\x2C\x01\xFF\x0F", 8));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
}

TEST_F(HdrStageTest, LeavesNoTraceWithItsSwitchesOff) {
    Run(MakeSoftFrame(), "SAVE_IMAGE=1\r\nSAVE_LOG=1\r\n");
    EXPECT_EQ(run_.LogText(), "");
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
}

TEST_F(HdrStageTest, HandsEachKeyToItsPlace) {
    SharedConfiguredState().SaveLog = 1;
    const Frame frame = MakeSoftFrame();
    Frame normal = frame;
    Frame hed = frame;
    ClaheFrame(hed.Data(), 48, 52, kTwelveBits, 16, 64, 2.5);
    FuseLayers(normal.Data(), hed.Data(), 48, 52, MinPixel(frame.Data(), 48, 52),
               MaxPixel(frame.Data(), 48, 52), 1, 1, 0.5F, 1, 0.1F, 0.6F, 1);
    EXPECT_THAT(Run(frame,
                    "03_HDR_BLOCK_SIZE=16\r\n03_HDR_HISTO_BINS=64\r\n03_HDR_CLIp_LIMIT=2.5\r\n"
                    "03_MAX_LAMBDA=0.5\r\n03_ALPHA_NORM=0.1\r\n03_ALPHA_HE=0.6\r\n"),
                EqualsFrame(normal));
    const std::string log = run_.LogText();
    EXPECT_NE(log.find("Fraction of normal Image      : 0.10"), std::string::npos);
    EXPECT_NE(log.find("Fraction of hed Image      : 0.60"), std::string::npos);
}

}  // namespace
}  // namespace vastrelline
