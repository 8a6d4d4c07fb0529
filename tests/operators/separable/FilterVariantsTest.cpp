// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

#include "operators/separable/SeparableFilter.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr size_t kGuards = 16;
constexpr uint16_t kGuard = 0xA5C3;

enum class Content { Zeros, AllMax, Extremes, Noise };

std::vector<uint16_t> MakePixels(std::mt19937& random, size_t count, Content content, int32_t maxValue) {
    std::vector<uint16_t> pixels(count + 2 * kGuards, kGuard);
    const auto top = static_cast<uint16_t>(maxValue);
    for (size_t i = kGuards; i < kGuards + count; ++i) {
        const auto number = static_cast<uint32_t>(random() >> 7U);
        switch (content) {
            case Content::Zeros:
                pixels[i] = 0;
                break;
            case Content::AllMax:
                pixels[i] = top;
                break;
            case Content::Extremes:
                pixels[i] = number % 2 == 0 ? top : uint16_t{0};
                break;
            case Content::Noise:
                pixels[i] = static_cast<uint16_t>(number % (static_cast<uint32_t>(maxValue) + 1));
                break;
        }
    }
    return pixels;
}

std::vector<double> MakeKernel(std::mt19937& random, int32_t size) {
    std::vector<double> kernel(static_cast<size_t>(size));
    // Some below 0, and none a short binary fraction.
    for (double& tap : kernel) tap = (static_cast<double>(random()) / 4294967296.0 - 0.3) * 2.0 / size;
    return kernel;
}

// Runs a variant on a copy between guards and gives all of it back, guards
// included.
std::vector<uint16_t> Run(const FilterVariant& variant, std::vector<uint16_t> pixels, int32_t width,
                          int32_t height, int32_t maxValue, std::span<const double> kernel, EdgeRule edges) {
    variant.run({pixels.data() + kGuards, width, height, maxValue, kernel, edges});
    return pixels;
}

void ExpectAllVariantsEqual(std::mt19937& random, int32_t width, int32_t height, int32_t size) {
    const std::vector<double> kernel = MakeKernel(random, size);
    const size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
    for (const Content content : {Content::Zeros, Content::AllMax, Content::Extremes, Content::Noise}) {
        for (const int32_t maxValue : {4095, 65535}) {
            const std::vector<uint16_t> pixels = MakePixels(random, count, content, maxValue);
            for (const EdgeRule edges : {EdgeRule::Wrap, EdgeRule::Replicate}) {
                const std::span<const FilterVariant> variants = FilterVariants();
                const std::vector<uint16_t> expected =
                    Run(variants.front(), pixels, width, height, maxValue, kernel, edges);
                for (const FilterVariant& variant : variants.subspan(1)) {
                    ASSERT_EQ(expected, Run(variant, pixels, width, height, maxValue, kernel, edges))
                        << variant.name << ' ' << width << " x " << height << ", " << size
                        << " taps, content " << static_cast<int>(content) << ", edges "
                        << static_cast<int>(edges);
                }
            }
        }
    }
}

TEST(FilterVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(FilterVariants, {"scalar", "baseline", "avx2", "avx512"});
}

TEST(FilterVariants, TheLastOneRuns) {
    std::vector<uint16_t> pixels(9 * 7, 100);
    ExpectLastFormRuns(FilterVariants, 1, [&] { GaussFilterWrap(pixels.data(), 9, 7, 4095, 1.0); });
    ExpectLastFormRuns(FilterVariants, 1, [&] { GaussFilterReplicate(pixels.data(), 9, 7, 4095, 1.0); });
}

// Every width and height from 1 past the widest vector and its blocks.
TEST(FilterVariants, EverySmallWidthAndHeightGivesTheReferenceBits) {
    std::mt19937 random(20240501);
    for (int32_t side = 1; side <= 70; ++side) {
        for (const int32_t size : {1, 3, 5, 7}) {
            ExpectAllVariantsEqual(random, side, 6, size);
            ExpectAllVariantsEqual(random, 5, side, size);
        }
        if (HasFatalFailure()) return;
    }
}

TEST(FilterVariants, KernelsOfEverySizeGiveTheReferenceBits) {
    std::mt19937 random(20240502);
    for (const int32_t size : {1, 2, 3, 4, 5, 6, 7, 8, 9, 17, 31, 77, 78}) {
        for (const int32_t side : {1, 2, 31, 64, 65, 67})
            ExpectAllVariantsEqual(random, side, 70 - side / 2, size);
        if (HasFatalFailure()) return;
    }
}

TEST(FilterVariants, WideRowsGiveTheReferenceBits) {
    std::mt19937 random(20240503);
    for (const int32_t width : {127, 128, 129, 255, 257, 521}) ExpectAllVariantsEqual(random, width, 9, 7);
}

// A limit past 16 bits keeps the low bits; the fast forms must not clamp to
// 65535 instead.
// Of so many pixels the next row is asked for ahead of its turn, also where there is none.
TEST(FilterVariants, LargeFramesGiveTheReferenceBits) {
    constexpr int32_t kWidth = 2049;
    constexpr int32_t kHeight = 2048;
    std::mt19937 random(20240531);
    const std::vector<double> kernel = MakeKernel(random, 3);
    const std::vector<uint16_t> noise = MakePixels(random, size_t{kWidth} * kHeight, Content::Noise, 65535);
    for (const EdgeRule edges : {EdgeRule::Wrap, EdgeRule::Replicate}) {
        const auto filtered = [&](const FilterVariant& variant) {
            std::vector<uint16_t> pixels = noise;
            variant.run({pixels.data() + kGuards, kWidth, kHeight, 65535, kernel, edges});
            return pixels;
        };
        const std::vector<uint16_t> expected = filtered(FilterVariants().front());
        for (const FilterVariant& variant : FilterVariants().subspan(1))
            ASSERT_TRUE(expected == filtered(variant)) << variant.name << ' ' << static_cast<int>(edges);
    }
}

TEST(FilterVariants, LimitBeyondSixteenBitsKeepsTheLowBits) {
    const std::vector<double> kernel = {300.0};
    for (const FilterVariant& variant : FilterVariants()) {
        std::vector<uint16_t> pixels = {1, 0, 1, 2};
        variant.run({pixels.data(), 4, 1, 1 << 20, kernel, EdgeRule::Wrap});
        // 90000 is 65536 + 24464; 180000 is 2 * 65536 + 48928.
        EXPECT_EQ((std::vector<uint16_t>{24464, 0, 24464, 48928}), pixels) << variant.name;
    }
}

// So far apart that a double cannot hold both.
constexpr double kFar = 1099511627776.0 * 1048576.0;  // 2^60

// Taps ascending: far up, far down and then 1 is 1; 1, far down, far up is 0. Any other order swaps them.
TEST(FilterVariants, TapsAreAddedInAscendingOrder) {
    for (const FilterVariant& variant : FilterVariants()) {
        std::vector<uint16_t> row(70, 1);
        variant.run({row.data(), 70, 1, 4095, std::vector<double>{kFar, -kFar, 1}, EdgeRule::Wrap});
        EXPECT_EQ(std::vector<uint16_t>(70, 1), row) << variant.name;
        std::vector<uint16_t> column(70, 1);
        variant.run({column.data(), 1, 70, 4095, std::vector<double>{kFar, -kFar, 1}, EdgeRule::Wrap});
        EXPECT_EQ(std::vector<uint16_t>(70, 1), column) << variant.name;
        variant.run({row.data(), 70, 1, 4095, std::vector<double>{1, -kFar, kFar}, EdgeRule::Wrap});
        EXPECT_EQ(std::vector<uint16_t>(70, 0), row) << variant.name;
    }
}

// 3 * (2^30 + 2^-22) lies half-way between two doubles and is rounded to 3 * 2^30 + 2^-20 before it is taken
// away from just that: nothing is left. Fused, 2^-22 would be left, and the columns would make 512 of it.
TEST(FilterVariants, ProductsAreRoundedBeforeTheyAreAdded) {
    const double tap = std::ldexp(1.0, 30) + std::ldexp(1.0, -22);
    const std::vector<double> kernel = {3 * std::ldexp(1.0, 30) + std::ldexp(1.0, -20), -tap, 0};
    for (const FilterVariant& variant : FilterVariants()) {
        std::vector<uint16_t> pixels;
        for (int32_t i = 0; i < 66 * 9 / 3; ++i) pixels.insert(pixels.end(), {1, 3, 0});
        // What is not 0 after the rows is far beyond 32 bits after the columns, and so becomes 0.
        variant.run({pixels.data(), 66, 9, 4095, kernel, EdgeRule::Wrap});
        EXPECT_EQ(std::vector<uint16_t>(66 * 9, 0), pixels) << variant.name;
    }
}

TEST(FilterVariants, FramesAboutAsHighAsTheKernelGiveTheReferenceBits) {
    std::mt19937 random(20240504);
    for (const int32_t size : {3, 5, 31, 77})
        for (int32_t height = std::max(1, size - 2); height <= size + 5; ++height)
            ExpectAllVariantsEqual(random, 9, height, size);
    for (const int32_t height : {1, 2, 3, 10}) ExpectAllVariantsEqual(random, 9, height, 77);
}

}  // namespace
}  // namespace vastrelline
