// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "operators/separable/GaussKernel.h"
#include "operators/separable/SeparableFilter.h"
#include "pixels/Border.h"
#include "pixels/ScratchVector.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

Frame Filtered(Frame frame, const std::vector<double>& kernel, int32_t maxValue = kTwelveBits) {
    SeparableFilter(frame.Data(), frame.width, frame.height, maxValue, kernel.data(),
                    static_cast<int32_t>(kernel.size()));
    return frame;
}

Frame GaussWrapped(Frame frame, double sigma) {
    GaussFilterWrap(frame.Data(), frame.width, frame.height, kTwelveBits, sigma);
    return frame;
}

Frame GaussReplicated(Frame frame, double sigma) {
    GaussFilterReplicate(frame.Data(), frame.width, frame.height, kTwelveBits, sigma);
    return frame;
}

// 160 spread by 1/4, 1/2, 1/4 in both directions: 10 at the corners, 20 at the
// sides, 40 in the middle.
TEST(SeparableFilter, ImpulseBecomesTheProductOfTheTaps) {
    EXPECT_THAT(
        Filtered(Impulse(5, 5, 2, 2, 160), {0.25, 0.5, 0.25}),
        EqualsFrame(FromRows(
            {{0, 0, 0, 0, 0}, {0, 10, 20, 10, 0}, {0, 20, 40, 20, 0}, {0, 10, 20, 10, 0}, {0, 0, 0, 0, 0}})));
}

// The first tap belongs to the pixel before: everything moves right and down,
// around the edges.
TEST(SeparableFilter, KernelIsNotMirroredAndEdgesWrap) {
    EXPECT_THAT(Filtered(FromRows({{1, 2, 3}, {4, 5, 6}}), {1, 0, 0}),
                EqualsFrame(FromRows({{6, 4, 5}, {3, 1, 2}})));
}

// Five taps over two columns: places -2..2 of column 0 are columns 0 1 0 1 0.
TEST(SeparableFilter, FrameNarrowerThanTheKernelWrapsAsOftenAsItTakes) {
    const std::vector<double> kernel = {1, 2, 4, 8, 16};  // 0 1 0 1 0: 1 + 4 + 16 = 21 and 2 + 8 = 10
    // One row: the column pass multiplies by 31.
    EXPECT_THAT(Filtered(FromRows({{1, 3}}), kernel, 65535),
                EqualsFrame(FromRows({{(21 * 1 + 10 * 3) * 31, (21 * 3 + 10 * 1) * 31}})));
}

TEST(SeparableFilter, NothingIsLimitedBetweenThePasses) {
    // The rows turn negative and the columns turn them back.
    EXPECT_THAT(Filtered(FromRows({{7, 4000}}), {-1}), EqualsFrame(FromRows({{7, 4000}})));
    // 8000 after the rows, 16000 after the columns.
    EXPECT_THAT(Filtered(FromRows({{7, 4000}}), {2}), EqualsFrame(FromRows({{28, 4095}})));
}

TEST(SeparableFilter, ResultIsTruncatedAndClampedToTheRange) {
    // 3 * 0.5 * 0.5 = 0.75, 5 * 0.25 = 1.25, 7 * 0.25 = 1.75.
    EXPECT_THAT(Filtered(FromRows({{3, 5, 7}}), {0.5}), EqualsFrame(FromRows({{0, 1, 1}})));
    // The rows give -100, -190 and 80; the columns, all of one row, multiply by
    // -2 + 1.
    EXPECT_THAT(Filtered(FromRows({{100, 10, 100}}), {-2, 1, 0}), EqualsFrame(FromRows({{100, 190, 0}})));
    EXPECT_THAT(Filtered(FromRows({{100, 10, 100}}), {-2, 1, 0}, 99), EqualsFrame(FromRows({{99, 99, 0}})));
}

TEST(SeparableFilter, EvenKernelHasItsCentreAtHalfItsSize) {
    // Two taps, centre at index 1: the left neighbour and the pixel itself.
    EXPECT_THAT(Filtered(FromRows({{10, 20, 40}}), {1, 0}), EqualsFrame(FromRows({{40, 10, 20}})));
    EXPECT_THAT(Filtered(FromRows({{10, 20, 40}}), {0, 1}), EqualsFrame(FromRows({{10, 20, 40}})));
}

TEST(SeparableFilter, EmptyFrameAndEmptyKernelDoNothing) {
    EXPECT_THAT(Filtered(Frame(0, 3), {1}), EqualsFrame(Frame(0, 3)));
    Frame frame = FromRows({{1, 2}});
    SeparableFilter(frame.Data(), 2, 1, kTwelveBits, nullptr, 0);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{1, 2}})));
}

// Scratch holds anything, and a host may trap what is no number.
TEST(SeparableFilterVariants, ComputeOnNothingThatWasNotWritten) {
    constexpr uint64_t kSignallingNan = 0x7FF4000000000000;
    const std::vector<double> kernel(7, 1.0 / 7);
    const ScratchCall call(1024, 1024);
    for (int32_t width = 1001; width <= 1040; ++width) {
        for (const FilterVariant& variant : FilterVariants()) {
            { ScratchVector<uint64_t> scratch(size_t{1} << 18, kSignallingNan); }
            Frame frame = Noise(width, 12, kTwelveBits, 5);
            std::feclearexcept(FE_ALL_EXCEPT);
            variant.run({frame.Data(), width, 12, kTwelveBits, kernel, EdgeRule::Replicate});
            EXPECT_EQ(std::fetestexcept(FE_INVALID), 0) << variant.name << ", width " << width;
        }
    }
}

TEST(GaussFilter, FlatFrameStaysFlatUpToTheTruncation) {
    for (const double sigma : {0.4, 1.0, 3.0, 15.0}) {
        SCOPED_TRACE(sigma);
        const Frame result = GaussReplicated(Flat(40, 30, 1000), sigma);
        const uint16_t level = result.At(0, 0);
        EXPECT_TRUE(level == 1000 || level == 999) << level;
        EXPECT_THAT(result, EqualsFrame(Flat(40, 30, level)));
    }
}

// Its taps add up to a little more than 1.
TEST(GaussFilter, FixedKernelKeepsAFlatFrame) {
    for (const double sigma : {0.0, -0.1, -3.0, std::nan("")}) {
        EXPECT_THAT(GaussWrapped(Flat(9, 8, 1000), sigma), EqualsFrame(Flat(9, 8, 1000))) << sigma;
    }
}

TEST(GaussFilter, LeftEdgeShowsAtTheRightEdgeOnlyWhenItWraps) {
    const Frame bright = Impulse(20, 20, 0, 10, 4000);
    EXPECT_GT(GaussWrapped(bright, 1.0).At(19, 10), 0);
    EXPECT_EQ(0, GaussReplicated(bright, 1.0).At(19, 10));
    EXPECT_GT(GaussReplicated(bright, 1.0).At(1, 10), 0);
}

// Sigma 0 has no reach, so no border is added, and the fixed kernel of five
// taps wraps around.
TEST(GaussFilter, ReplicatedSigmaZeroWrapsAround) {
    const Frame bright = Impulse(20, 20, 0, 10, 4000);
    EXPECT_THAT(GaussReplicated(bright, 0.0), EqualsFrame(GaussWrapped(bright, 0.0)));
    // 4000 * 0.25 * 0.4 = 400, a hair above it.
    EXPECT_EQ(400, GaussReplicated(bright, 0.0).At(19, 10));
}

// A reach below half a pixel is none either, and this sigma has no kernel of its own.
TEST(GaussFilter, ReplicatedSigmaJustBelowZeroActsAsZero) {
    const Frame bright = Impulse(20, 20, 0, 10, 4000);
    EXPECT_THAT(GaussReplicated(bright, -0.1), EqualsFrame(GaussWrapped(bright, 0.0)));
}

// What it stands for: extend by the reach, filter with wrapping, cut out again.
TEST(GaussFilter, ReplicatedIsTheSameAsExtendingFilteringAndCropping) {
    for (const auto& [width, height] : {std::pair{1, 1}, {2, 9}, {9, 2}, {31, 18}}) {
        for (const double sigma : {0.4, 1.0, 2.5, 6.0}) {
            const int32_t pad = GaussMaskSize(sigma) - 1;
            Frame expected = Noise(width, height, kTwelveBits, 21);
            const Frame noise = expected;
            std::optional<ScratchVector<uint16_t>> padded =
                ExtendImage(noise.Data(), width, height, pad, pad, BorderMode::BorderCentred);
            ASSERT_TRUE(padded);
            GaussFilterWrap(padded->data(), width + pad, height + pad, kTwelveBits, sigma);
            CropImage(padded->data(), expected.Data(), width + pad, height + pad, pad, pad,
                      BorderMode::BorderCentred);
            EXPECT_THAT(GaussReplicated(noise, sigma), EqualsFrame(expected)) << sigma;
        }
    }
}

TEST(GaussFilter, SigmaWithoutAKernelLeavesTheReplicatedFrame) {
    const Frame noise = Noise(12, 9, kTwelveBits, 7);
    for (const double sigma : {-1.0, -0.5, std::nan(""), static_cast<double>(INFINITY), 1e9, 1e5}) {
        EXPECT_THAT(GaussReplicated(noise, sigma), EqualsFrame(noise)) << sigma;
    }
    for (const double sigma : {static_cast<double>(INFINITY), 1e9, 1e5}) {
        EXPECT_THAT(GaussWrapped(noise, sigma), EqualsFrame(noise)) << sigma;
    }
}

TEST(GaussFilter, MirroredFrameGivesTheMirroredResultUpToTheTruncation) {
    const Frame noise = Noise(31, 17, kTwelveBits, 3);
    const Frame result = GaussReplicated(noise, 2.0);
    const Frame mirrored = GaussReplicated(MirrorLeftRight(noise), 2.0);
    for (int32_t y = 0; y < noise.height; ++y) {
        for (int32_t x = 0; x < noise.width; ++x) {
            ASSERT_NEAR(result.At(x, y), mirrored.At(noise.width - 1 - x, y), 1);
        }
    }
}

}  // namespace
}  // namespace vastrelline
