// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

#include "stages/adaptive_smoothing/LocalDeviation.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr size_t kGuards = 16;
constexpr uint16_t kGuard = 0xA5C3;

enum class Content { Zeros, AllMax, Extremes, Noise };

std::vector<uint16_t> MakePixels(std::mt19937& random, size_t count, Content content, uint32_t maxValue) {
    std::vector<uint16_t> pixels(count);
    for (uint16_t& pixel : pixels) {
        const auto number = static_cast<uint32_t>(random() >> 7U);
        const uint32_t extreme = number % 2 == 0 ? maxValue : 0;
        const uint32_t values[] = {0, maxValue, extreme, number % (maxValue + 1)};
        pixel = static_cast<uint16_t>(values[static_cast<size_t>(content)]);
    }
    return pixels;
}

// The levels by a variant, between guards.
std::vector<uint16_t> Quantise(const DeviationVariant& variant, const std::vector<uint16_t>& image,
                               int32_t width, int32_t height) {
    std::vector<uint16_t> levels(image.size() + 2 * kGuards, kGuard);
    std::fill_n(levels.begin() + kGuards, image.size(), uint16_t{0});
    variant.run->quantise({image.data(), width, height, kDeviationRadius, levels.data() + kGuards});
    return levels;
}

void ExpectAllVariantsEqual(std::mt19937& random, int32_t width, int32_t height) {
    const size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
    for (const Content content : {Content::Zeros, Content::AllMax, Content::Extremes, Content::Noise}) {
        for (const uint32_t maxValue : {3U, 4095U, 17514U, 17515U, 65535U}) {
            const std::vector<uint16_t> image = MakePixels(random, count, content, maxValue);
            const std::span<const DeviationVariant> variants = DeviationVariants();
            const std::vector<uint16_t> expected = Quantise(variants.front(), image, width, height);
            for (const DeviationVariant& variant : variants.subspan(1)) {
                ASSERT_EQ(expected, Quantise(variant, image, width, height))
                    << variant.name << ' ' << width << " x " << height << ", content "
                    << static_cast<int>(content) << ", up to " << maxValue;
            }
        }
    }
}

TEST(DeviationVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(DeviationVariants, {"scalar", "baseline", "avx2", "avx512"});
}

TEST(DeviationVariants, TheLastOneRuns) {
    std::vector<uint16_t> pixels(9 * 7, 100);
    const std::vector<uint16_t> smooth(9 * 7, 90);
    std::vector<uint16_t> levels(9 * 7);
    const std::vector<double> weights(kTopDeviationLevel + 1, 0.5);
    ExpectLastFormRuns(DeviationVariants, 1, [&] {
        QuantiseDeviation({pixels.data(), 9, 7, kDeviationRadius, levels.data()});
    });
    ExpectLastFormRuns(DeviationVariants, 1, [&] {
        BlendByLevel({pixels.data(), smooth.data(), levels.data(), weights, 9 * 7});
    });
}

TEST(DeviationVariants, ReferenceComesFirst) {
    EXPECT_EQ(DeviationVariants().front().run->quantise, QuantiseDeviationScalar);
    EXPECT_EQ(DeviationVariants().front().run->blend, BlendByLevelScalar);
}

TEST(DeviationVariants, EverySmallSizeGivesTheReferenceBits) {
    std::mt19937 random(20240501);
    for (int32_t width = 1; width <= 24; ++width) ExpectAllVariantsEqual(random, width, 13);
    for (int32_t height = 1; height <= 24; ++height) ExpectAllVariantsEqual(random, 11, height);
}

// Strips are 192 columns wide, and 6 columns are margin.
TEST(DeviationVariants, SizesAroundWholeStripsGiveTheReferenceBits) {
    std::mt19937 random(20240502);
    for (const int32_t width : {197, 198, 199, 390, 391}) ExpectAllVariantsEqual(random, width, 17);
}

TEST(DeviationVariants, TallFramesKeepTheRoundingOfTheRunningSums) {
    std::mt19937 random(20240503);
    ExpectAllVariantsEqual(random, 29, 300);
}

TEST(DeviationVariants, BlendsAreEqual) {
    std::mt19937 random(20240504);
    std::vector<double> weights(kTopDeviationLevel + 1);
    for (double& weight : weights) weight = static_cast<double>(random()) / 4294967296.0 * 4.0 - 1.5;
    for (const size_t count : {0U, 1U, 3U, 4U, 5U, 8U, 63U, 64U, 65U, 1000U}) {
        for (const Content content : {Content::Zeros, Content::AllMax, Content::Extremes, Content::Noise}) {
            std::vector<uint16_t> pixels = MakePixels(random, count, content, 65535);
            pixels.resize(count + kGuards, kGuard);
            const std::vector<uint16_t> smooth = MakePixels(random, count, content, 4095);
            const std::vector<uint16_t> levels = MakePixels(random, count, content, kTopDeviationLevel);
            const auto run = [&](const DeviationVariant& variant) {
                std::vector<uint16_t> result = pixels;
                variant.run->blend(
                    {result.data(), smooth.data(), levels.data(), weights, static_cast<int64_t>(count)});
                return result;
            };
            const std::vector<uint16_t> expected = run(DeviationVariants().front());
            for (const DeviationVariant& variant : DeviationVariants())
                EXPECT_EQ(run(variant), expected) << variant.name << ' ' << count;
        }
    }
}

}  // namespace
}  // namespace vastrelline
