// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "config/FixedState.h"
#include "stages/gaussian/GaussianStage.h"
#include "support/FixedRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

class FixedGaussianTest : public testing::Test {
protected:
    Frame Pre(Frame frame, int32_t maxValue = kTwelveBits) {
        RunPreGaussian(frame.Data(), frame.width, frame.height, maxValue, run_.dumpCounter, run_.Log(),
                       run_.settings);
        return frame;
    }

    Frame Post(Frame frame, int32_t maxValue = kTwelveBits) {
        RunPostGaussian(frame.Data(), frame.width, frame.height, maxValue, run_.dumpCounter, run_.Log(),
                        run_.settings);
        return frame;
    }

    FixedRun run_;
};

// Sigma 1 with the left edge repeated, and the fixed kernel of sigma 0, which goes around the edges.
const Frame kBrightLeft = FromRows({{4000, 0, 0, 0, 0, 0, 0, 0}});
const Frame kAtSigmaOne = FromRows({{2798, 1201, 233, 17, 0, 0, 0, 0}});
const Frame kAtSigmaZero = FromRows({{1600, 1000, 200, 0, 0, 0, 200, 1000}});

TEST_F(FixedGaussianTest, EachPlaceHasItsOwnSigmaOfOneByDefault) {
    EXPECT_THAT(Pre(kBrightLeft), EqualsFrame(kAtSigmaOne));
    EXPECT_THAT(Post(kBrightLeft), EqualsFrame(kAtSigmaOne));
    run_.settings.PRE_GAUSSIAN_SIZE = 0.0;
    run_.settings.GAUSSIAN_SIZE = 9.0;  // another stage's
    EXPECT_THAT(Pre(kBrightLeft), EqualsFrame(kAtSigmaZero));
    EXPECT_THAT(Post(kBrightLeft), EqualsFrame(kAtSigmaOne));
    run_.settings.PRE_GAUSSIAN_SIZE = 1.0;
    run_.settings.POST_GAUSSIAN_SIZE = 0.0;
    EXPECT_THAT(Pre(kBrightLeft), EqualsFrame(kAtSigmaOne));
    EXPECT_THAT(Post(kBrightLeft), EqualsFrame(kAtSigmaZero));
}

TEST_F(FixedGaussianTest, ResultIsClampedToTheLargestValue) {
    const Frame limited = FromRows({{1000, 1000, 233, 17, 0, 0, 0, 0}});
    EXPECT_THAT(Pre(kBrightLeft, 1000), EqualsFrame(limited));
    EXPECT_THAT(Post(kBrightLeft, 1000), EqualsFrame(limited));
}

TEST_F(FixedGaussianTest, BothDumpUnderTheNameOfTheFirst) {
    SharedFixedState().SaveImage = 1;
    Pre(FromRows({{9}}));
    run_.settings.POST_GAUSSIAN_SIZE = -1.0;  // leaves the frame
    Post(FromRows({{300}}));
    EXPECT_EQ(run_.DumpedNames(), (std::vector<std::string>{"05_pregaussian.raw", "06_pregaussian.raw"}));
    EXPECT_EQ(run_.Dumped("06_pregaussian.raw"), "\x2C\x01");
    EXPECT_EQ(run_.dumpCounter, 7);
}

TEST_F(FixedGaussianTest, EachLogsItsNameAndSigma) {
    run_.settings.SAVE_LOG = 1;
    run_.settings.PRE_GAUSSIAN_SIZE = 2.346;
    run_.settings.POST_GAUSSIAN_SIZE = -0.5;
    Pre(Flat(9, 9, 5));
    Post(Flat(9, 9, 5));
    EXPECT_EQ(MaskTimes(run_.LogText()),
              "#### hh:mm:ss \t: Pre-Gaussian ( N ms )\r\n"
              "\t\t\t MaskSize   : 2.35d\r\n"  // sic
              "#### hh:mm:ss \t: Post-Gaussian ( N ms )\r\n"
              "\t\t\t MaskSize   : -0.50\r\n");
}

TEST_F(FixedGaussianTest, LeavesNoTraceWithItsSwitchesOff) {
    run_.settings.SAVE_IMAGE = 1;  // the run's state decides on dumps, not the record
    Pre(kBrightLeft);
    Post(kBrightLeft);
    EXPECT_TRUE(run_.DumpedNames().empty());
    EXPECT_EQ(run_.dumpCounter, 5);
    EXPECT_EQ(run_.LogText(), "");
}

}  // namespace
}  // namespace vastrelline
