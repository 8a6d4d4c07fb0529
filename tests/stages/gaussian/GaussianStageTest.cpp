// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfiguredState.h"
#include "stages/gaussian/GaussianStage.h"
#include "support/ConfiguredRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

class GaussianStageTest : public testing::Test {
protected:
    // Runs the stage at position 7.
    Frame Run(Frame frame, std::string_view keys, int32_t maxValue = kTwelveBits) {
        run_.WriteProfile("[Molar]\r\n" + std::string(keys));
        RunGaussianStage(frame.Data(), frame.width, frame.height, maxValue, run_.Log(), 7);
        return frame;
    }

    ConfiguredRun run_;
};

const Frame kBrightLeft = FromRows({{4000, 0, 0, 0, 0, 0, 0, 0}});

// The taps at sigma 1 are 0.39905, 0.24204, 0.05401 and 0.00443 from the middle outwards. On the left edge
// 4000 counts for all that lies beyond it too; one row has no other rows to mix with.
const Frame kBrightLeftProtected = FromRows({{2798, 1201, 233, 17, 0, 0, 0, 0}});
const Frame kBrightLeftWrapped = FromRows({{1596, 968, 216, 17, 0, 17, 216, 968}});

TEST_F(GaussianStageTest, MissingKeysMeanOnePassOfSigmaOneWithRepeatedEdges) {
    EXPECT_THAT(Run(kBrightLeft, "CAPTION=x\r\n"), EqualsFrame(kBrightLeftProtected));
}

TEST_F(GaussianStageTest, KeysOfOtherPositionsAreNoMatter) {
    EXPECT_THAT(Run(kBrightLeft,
                    "06_GAUSSIAN_REPEAT=0\r\nGAUSSIAN_REPEAT=0\r\n08_GAUSSIAN_ProtectOutline=0\r\n"
                    "00_GAUSSIAN_SIZE=5\r\n"),
                EqualsFrame(kBrightLeftProtected));
}

TEST_F(GaussianStageTest, UnprotectedOutlineWrapsAround) {
    EXPECT_THAT(Run(kBrightLeft, "07_GAUSSIAN_ProtectOutline=0\r\n"), EqualsFrame(kBrightLeftWrapped));
}

TEST_F(GaussianStageTest, AnyProtectOutlineButZeroProtects) {
    EXPECT_THAT(Run(kBrightLeft, "07_GAUSSIAN_ProtectOutline=-3\r\n"), EqualsFrame(kBrightLeftProtected));
}

TEST_F(GaussianStageTest, ResultIsClampedToTheLargestValue) {
    EXPECT_THAT(Run(kBrightLeft, "", 1000), EqualsFrame(FromRows({{1000, 1000, 233, 17, 0, 0, 0, 0}})));
}

// Taps of 0.05, 0.25, 0.4, 0.25 and 0.05, around the edges although they are protected.
TEST_F(GaussianStageTest, SizeZeroIsTheFixedKernelAroundTheEdges) {
    EXPECT_THAT(Run(Impulse(7, 7, 0, 3, 1000), "07_GAUSSIAN_SIZE=0\r\n07_GAUSSIAN_ProtectOutline=1\r\n"),
                EqualsFrame(FromRows({{0, 0, 0, 0, 0, 0, 0},
                                      {20, 12, 2, 0, 0, 2, 12},
                                      {100, 62, 12, 0, 0, 12, 62},
                                      {160, 100, 20, 0, 0, 20, 100},
                                      {100, 62, 12, 0, 0, 12, 62},
                                      {20, 12, 2, 0, 0, 2, 12},
                                      {0, 0, 0, 0, 0, 0, 0}})));
}

TEST_F(GaussianStageTest, EachPassSmoothsTheOneBefore) {
    // The fixed kernel on one row: 1000 becomes 400, 250, 50, 0, 0, 50, 250 on seven pixels. Then
    // 0.4 * 400 + 0.5 * 250 + 0.1 * 50 = 290, 0.4 * 250 + 0.25 * (400 + 50) + 0.05 * (250 + 0) = 225,
    // 0.4 * 50 + 0.25 * 250 + 0.05 * 400 = 102.5 and 0.25 * 50 + 0.05 * 250 + 0.05 * 50 = 27.5.
    EXPECT_THAT(Run(FromRows({{1000, 0, 0, 0, 0, 0, 0}}), "07_GAUSSIAN_SIZE=0\r\n07_GAUSSIAN_REPEAT=2\r\n"),
                EqualsFrame(FromRows({{290, 225, 102, 27, 27, 102, 225}})));
}

// A sigma this small has the kernel 0, 1, 0: what is left is that every second pixel and row is dropped and
// drawn again as the mean of its neighbours, or as the one before at the right and the bottom.
TEST_F(GaussianStageTest, ReducedFrameLosesDetailEvenAtATinySigma) {
    constexpr std::string_view kKeys = "07_GAUSSIAN_SIZE=0.02\r\n07_GAUSSIAN_ReduceTimeRatio=2\r\n";
    const Frame frame = FromRows({{100, 9, 200, 9}, {9, 9, 9, 9}, {300, 9, 500, 9}, {9, 9, 9, 9}});
    const Frame expected =
        FromRows({{100, 150, 200, 200}, {200, 275, 200, 200}, {300, 300, 500, 500}, {300, 300, 500, 500}});
    EXPECT_THAT(Run(frame, kKeys), EqualsFrame(expected));
    // The outline's protection is not asked for on this path.
    EXPECT_THAT(Run(frame, std::string(kKeys) + "07_GAUSSIAN_ProtectOutline=0\r\n"), EqualsFrame(expected));
}

TEST_F(GaussianStageTest, NoPassLeavesTheFrameAndStillLogsAndDumps) {
    SharedConfiguredState().SaveLog = 1;
    SharedConfiguredState().SaveImage = 1;
    EXPECT_THAT(Run(FromRows({{1, 2}, {300, 4095}}), "07_GAUSSIAN_REPEAT=0\r\n"),
                EqualsFrame(FromRows({{1, 2}, {300, 4095}})));
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: Gaussian ( S.SSS sec )\r\n"
              "\t\t\t MaskSize   : 1.00\r\n"
              "\t\t\t RepaetCnt  : 0\r\n");
    EXPECT_EQ(run_.DumpedNames(), std::vector<std::string>{"05_pregaussian.raw"});
    EXPECT_EQ(run_.Dumped("05_pregaussian.raw"), std::string("\x01\0\x02\0\x2C\x01\xFF\x0F", 8));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
}

struct IdleCase {
    const char* name;
    const char* keys;
};

class IdleGaussianStageTest : public GaussianStageTest, public testing::WithParamInterface<IdleCase> {};

TEST_P(IdleGaussianStageTest, LeavesTheFrameAsItIs) {
    const Frame frame = Noise(13, 9, 4095, 11);
    EXPECT_THAT(Run(frame, GetParam().keys), EqualsFrame(frame));
}

INSTANTIATE_TEST_SUITE_P(
    HostileKeys, IdleGaussianStageTest,
    testing::Values(
        IdleCase{"NegativeRepeat", "07_GAUSSIAN_REPEAT=-1\r\n"},
        IdleCase{"SmallestRepeat", "07_GAUSSIAN_REPEAT=-2147483648\r\n"},
        IdleCase{"RatioZero", "07_GAUSSIAN_ReduceTimeRatio=0\r\n"},
        IdleCase{"RatioMinusOne", "07_GAUSSIAN_ReduceTimeRatio=-1\r\n"},
        IdleCase{"SmallestRatio", "07_GAUSSIAN_ReduceTimeRatio=-2147483648\r\n"},
        IdleCase{"LargestRatio", "07_GAUSSIAN_ReduceTimeRatio=2147483647\r\n"},
        IdleCase{"NegativeSize", "07_GAUSSIAN_SIZE=-1\r\n"}, IdleCase{"HugeSize", "07_GAUSSIAN_SIZE=1e9\r\n"},
        IdleCase{"HugeSizeAroundTheEdges", "07_GAUSSIAN_SIZE=1e300\r\n07_GAUSSIAN_ProtectOutline=0\r\n"},
        IdleCase{"NegativeSizeReduced", "07_GAUSSIAN_SIZE=-2\r\n07_GAUSSIAN_ReduceTimeRatio=2\r\n"},
        IdleCase{"SizeNotANumberReduced", "07_GAUSSIAN_SIZE=nan\r\n07_GAUSSIAN_ReduceTimeRatio=3\r\n"},
        IdleCase{"HugeSizeReduced", "07_GAUSSIAN_SIZE=1e9\r\n07_GAUSSIAN_ReduceTimeRatio=2\r\n"},
        // Idle passes must not be counted out one by one.
        IdleCase{"IdlePassesForEver", "07_GAUSSIAN_ReduceTimeRatio=0\r\n07_GAUSSIAN_REPEAT=2147483647\r\n"}),
    [](const auto& test) { return test.param.name; });

TEST_F(GaussianStageTest, LogsTheKeysThatItUsed) {
    SharedConfiguredState().SaveLog = 1;
    Run(Flat(9, 9, 5), "07_GAUSSIAN_SIZE=2.346\r\n07_GAUSSIAN_REPEAT=3\r\n");
    Run(Flat(9, 9, 5), "07_GAUSSIAN_SIZE=-1\r\n07_GAUSSIAN_REPEAT=-4\r\n");
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: Gaussian ( S.SSS sec )\r\n"
              "\t\t\t MaskSize   : 2.35\r\n"
              "\t\t\t RepaetCnt  : 3\r\n"
              "#### hh:mm:ss \t: Gaussian ( S.SSS sec )\r\n"
              "\t\t\t MaskSize   : -1.00\r\n"
              "\t\t\t RepaetCnt  : -4\r\n");
}

TEST_F(GaussianStageTest, DumpHoldsTheSmoothedFrameAndTheNumberRisesPast99) {
    SharedConfiguredState().SaveImage = 1;
    SharedConfiguredState().DumpNumber = 99;
    Run(FromRows({{4000, 0, 0, 0}}), "07_GAUSSIAN_REPEAT=0\r\n");
    Run(kBrightLeft, "");
    EXPECT_EQ(run_.DumpedNames(), (std::vector<std::string>{"100_pregaussian.raw", "99_pregaussian.raw"}));
    // 2798 is 0x0AEE, 1201 is 0x04B1, 233 is 0x00E9 and 17 is 0x0011.
    EXPECT_EQ(run_.Dumped("100_pregaussian.raw"),
              std::string("\xEE\x0A\xB1\x04\xE9\0\x11\0\0\0\0\0\0\0\0\0", 16));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 101);
}

TEST_F(GaussianStageTest, LeavesNoTraceWithItsSwitchesOff) {
    Run(kBrightLeft, "SAVE_IMAGE=1\r\nSAVE_LOG=1\r\n");
    EXPECT_EQ(run_.LogText(), "");
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
}

TEST_F(GaussianStageTest, DumpThatCannotBeWrittenChangesNoPixelAndTakesItsNumber) {
    SharedConfiguredState().SaveImage = 1;
    SharedConfiguredState().WritePath = run_.Wide(L"missing") + L"\\";
    EXPECT_THAT(Run(kBrightLeft, ""), EqualsFrame(kBrightLeftProtected));
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
}

TEST_F(GaussianStageTest, EmptyFrameIsNoObstacle) {
    EXPECT_THAT(Run(Frame(0, 3), ""), EqualsFrame(Frame(0, 3)));
}

}  // namespace
}  // namespace vastrelline
