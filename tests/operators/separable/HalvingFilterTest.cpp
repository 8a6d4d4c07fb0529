// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "operators/separable/HalvingFilter.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr size_t kGuards = 16;
constexpr uint16_t kGuard = 0xA5C3;

// Runs a variant into a result between guards and gives all of it back, guards included.
std::vector<uint16_t> Run(const HalvingVariant& variant, const Frame& source, int32_t maxValue,
                          std::span<const double> kernel, EdgeRule edges) {
    const size_t count = static_cast<size_t>(source.width / 2) * static_cast<size_t>(source.height / 2);
    std::vector<uint16_t> result(count + 2 * kGuards, kGuard);
    variant.run(
        {source.Data(), source.width, source.height, maxValue, kernel, edges, result.data() + kGuards});
    return result;
}

// Taps of which some are below 0 and none is a short binary fraction.
std::vector<double> MakeKernel(int32_t size) {
    std::vector<double> kernel;
    for (const uint16_t number : Noise(size, 1, 65535, 20240501).pixels)
        kernel.push_back((number / 65536.0 - 0.3) * 2.1 / size);
    return kernel;
}

void ExpectAllVariantsEqual(const Frame& source, int32_t maxValue, int32_t size) {
    const std::vector<double> kernel = MakeKernel(size);
    for (const EdgeRule edges : {EdgeRule::Wrap, EdgeRule::Replicate}) {
        const std::vector<uint16_t> expected =
            Run(HalvingVariants().front(), source, maxValue, kernel, edges);
        EXPECT_TRUE(std::all_of(expected.end() - kGuards, expected.end(),
                                [](uint16_t pixel) { return pixel == kGuard; }));
        for (const HalvingVariant& variant : HalvingVariants().subspan(1)) {
            ASSERT_EQ(expected, Run(variant, source, maxValue, kernel, edges))
                << variant.name << ' ' << source.width << " x " << source.height << ", " << size
                << " taps, edges " << static_cast<int>(edges) << ", limit " << maxValue;
        }
    }
}

// The whole road: all pixels smoothed, then every second one of every second row taken.
Frame SmoothedThenHalved(Frame frame, int32_t maxValue, double sigma) {
    GaussFilterReplicate(frame.Data(), frame.width, frame.height, maxValue, sigma);
    Frame halved(frame.width / 2, frame.height / 2);
    for (int32_t y = 0; y < halved.height; ++y)
        for (int32_t x = 0; x < halved.width; ++x) halved.At(x, y) = frame.At(2 * x, 2 * y);
    return halved;
}

Frame Halved(const Frame& frame, int32_t maxValue, double sigma) {
    Frame halved(frame.width / 2, frame.height / 2);
    GaussHalveReplicate(frame.Data(), frame.width, frame.height, maxValue, sigma, halved.Data());
    return halved;
}

TEST(HalvingVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(HalvingVariants, {"scalar", "baseline", "avx2", "avx512"});
}

TEST(HalvingVariants, TheLastOneRuns) {
    ExpectLastFormRuns(HalvingVariants, 1, [] { Halved(Noise(9, 7, 4095, 5), 4095, 1.0); });
}

// Taps 1, 2, 4 along the rows and the columns of a frame with 1 at (2, 2): the result's (1, 1) sees it in the
// middle. The pixel at (3, 1) lies between four pixels of the result, and each sees it at a corner.
TEST(HalvingFilter, KeepsTheFirstOfEveryTwoPixelsAndRows) {
    const std::vector<double> kernel = {1, 2, 4};
    for (const HalvingVariant& variant : HalvingVariants()) {
        Frame result(3, 2);
        const Frame middle = Impulse(7, 5, 2, 2, 10);
        variant.run({middle.Data(), 7, 5, 4095, kernel, EdgeRule::Replicate, result.Data()});
        EXPECT_THAT(result, EqualsFrame(FromRows({{0, 0, 0}, {0, 40, 0}}))) << variant.name;
        const Frame beside = Impulse(7, 5, 3, 1, 10);
        variant.run({beside.Data(), 7, 5, 4095, kernel, EdgeRule::Replicate, result.Data()});
        // (1, 0) sees it right below: 4 * 4. (2, 0) left below: 1 * 4. (1, 1) right above: 4 * 1. (2, 1) left
        // above: 1 * 1.
        EXPECT_THAT(result, EqualsFrame(FromRows({{0, 160, 40}, {0, 40, 10}}))) << variant.name;
    }
}

TEST(HalvingFilter, EverySmallSideGivesTheReferenceBits) {
    for (int32_t side = 1; side <= 70; ++side) {
        for (const int32_t size : {1, 3, 5, 7}) {
            ExpectAllVariantsEqual(Noise(side, 6, 4095, 20240502), 4095, size);
            ExpectAllVariantsEqual(Noise(5, side, 65535, 20240503), 65535, size);
        }
        if (HasFatalFailure()) return;
    }
}

TEST(HalvingFilter, KernelsOfEverySizeGiveTheReferenceBits) {
    for (const int32_t size : {1, 2, 3, 4, 5, 6, 7, 8, 9, 17, 31, 77, 78}) {
        for (const int32_t side : {2, 3, 31, 66, 131})
            ExpectAllVariantsEqual(Noise(side, 70 - side / 2, 4095, 20240504), 4095, size);
        if (HasFatalFailure()) return;
    }
}

TEST(HalvingFilter, ExtremesAndLimitsGiveTheReferenceBits) {
    Frame extremes = Noise(133, 9, 1, 20240505);
    for (uint16_t& pixel : extremes.pixels) pixel = pixel == 0 ? uint16_t{0} : uint16_t{65535};
    for (const Frame& frame : {extremes, Flat(133, 9, 0), Flat(133, 9, 65535)}) {
        for (const int32_t maxValue : {-1, 0, 4095, 65535, 1 << 20})
            ExpectAllVariantsEqual(frame, maxValue, 7);
    }
}

// Of so many pixels the next row is asked for ahead of its turn, also where there is none.
TEST(HalvingFilter, LargeFramesGiveTheReferenceBits) {
    ExpectAllVariantsEqual(Noise(2049, 2048, 65535, 20240531), 65535, 3);
}

TEST(GaussHalveReplicate, IsTheSmoothedFrameHalved) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    // Sigma 0 wraps around, -0.2 too; -1, what is not a number and 1e9 do not smooth.
    for (const double sigma : {1.0, 0.3, 2.5, 15.0, 0.0, -0.2, -1.0, kNaN, 1e9}) {
        for (const Frame& frame : {Noise(37, 22, 4095, 7), Noise(2, 2, 4095, 7), Noise(2, 19, 4095, 7)}) {
            EXPECT_THAT(Halved(frame, 4095, sigma), EqualsFrame(SmoothedThenHalved(frame, 4095, sigma)))
                << sigma << ", " << frame.width;
        }
    }
}

TEST(GaussHalveReplicate, NothingComesOfOneColumnOrRow) {
    EXPECT_THAT(Halved(Flat(1, 9, 5), 4095, 1.0), EqualsFrame(Frame(0, 4)));
    EXPECT_THAT(Halved(Flat(9, 1, 5), 4095, -1.0), EqualsFrame(Frame(4, 0)));
    EXPECT_THAT(Halved(Frame(0, 0), 4095, 1.0), EqualsFrame(Frame(0, 0)));
}

}  // namespace
}  // namespace vastrelline
