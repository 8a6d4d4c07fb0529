// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <span>
#include <vector>

#include "operators/median/MedianFilter.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr size_t kGuards = 64;
constexpr uint16_t kGuard = 0xA5C3;

enum class Content { AllMax, TwoLevels, Extremes, Noise, FullNoise };
constexpr Content kHardContents[] = {Content::Extremes, Content::FullNoise};

std::vector<uint16_t> MakePixels(std::mt19937& random, size_t count, Content content) {
    std::vector<uint16_t> pixels(count);
    for (uint16_t& pixel : pixels) {
        const auto number = static_cast<uint32_t>(random() >> 7U);
        switch (content) {
            case Content::AllMax:
                pixel = 65535;
                break;
            case Content::TwoLevels:
                pixel = number % 2 == 0 ? 1000 : 1001;
                break;
            case Content::Extremes:
                pixel = number % 2 == 0 ? 65535 : 0;
                break;
            case Content::Noise:
                pixel = static_cast<uint16_t>(number % 4096);
                break;
            case Content::FullNoise:
                pixel = static_cast<uint16_t>(number % 65536);
                break;
        }
    }
    return pixels;
}

// Runs a variant into a buffer between guards and gives all of it back, guards included.
std::vector<uint16_t> RunForm(const MedianVariant& variant, const std::vector<uint16_t>& source,
                              MedianCall call) {
    std::vector<uint16_t> out(source.size() + 2 * kGuards, kGuard);
    call.source = source.data();
    call.destination = out.data() + kGuards;
    FilterMedianWith(variant, call);
    return out;
}

void ExpectAllVariantsEqual(std::mt19937& random, const MedianCall& call, std::span<const Content> contents) {
    const size_t count = static_cast<size_t>(call.width) * static_cast<size_t>(call.height);
    for (const Content content : contents) {
        const std::vector<uint16_t> source = MakePixels(random, count, content);
        const std::vector<uint16_t> expected = RunForm(MedianVariants().front(), source, call);
        for (const MedianVariant& variant : MedianVariants().subspan(1)) {
            ASSERT_EQ(expected, RunForm(variant, source, call))
                << variant.name << ' ' << call.width << " x " << call.height << ", window "
                << call.windowWidth << " x " << call.windowHeight << ", rows " << call.firstRow << " to "
                << call.lastRow << ", content " << static_cast<int>(content);
        }
    }
}

TEST(MedianVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(MedianVariants, {"scalar", "histogram", "columns", "counted", "baseline", "avx2", "avx512"});
}

TEST(MedianVariants, TheLastOneRuns) {
    const std::vector<uint16_t> source(9 * 7, 100);
    std::vector<uint16_t> medians(source.size());
    ExpectLastFormRuns(MedianVariants, 1, [&] {
        FilterMedian({source.data(), medians.data(), 9, 7, 3, 3, 0, 6});
    });
}

TEST(MedianVariants, SquaresOfEverySizeGiveTheReferenceBits) {
    std::mt19937 random(20240501);
    for (int32_t mask = 1; mask <= 16; ++mask) {
        const Content contents[] = {mask % 2 == 0 ? Content::Extremes : Content::Noise, Content::TwoLevels,
                                    Content::AllMax};
        ExpectAllVariantsEqual(random, {nullptr, nullptr, mask + 34, mask + 2, mask, mask, 0, mask + 1},
                               contents);
        if (HasFatalFailure()) return;
    }
}

TEST(MedianVariants, RowAndColumnWindowsGiveTheReferenceBits) {
    std::mt19937 random(20240502);
    for (int32_t mask = 1; mask <= 17; ++mask) {
        ExpectAllVariantsEqual(random, {nullptr, nullptr, 52, 3, mask, 1, 0, 2}, kHardContents);
        ExpectAllVariantsEqual(random, {nullptr, nullptr, 37, mask + 2, 1, mask, 0, mask + 1}, kHardContents);
        if (HasFatalFailure()) return;
    }
}

// Past the widest vector by one, and past a strip of columns.
TEST(MedianVariants, EverySmallWidthGivesTheReferenceBits) {
    std::mt19937 random(20240503);
    for (int32_t width = 1; width <= 70; ++width)
        ExpectAllVariantsEqual(random, {nullptr, nullptr, width, 6, 3, 3, 0, 5}, kHardContents);
    for (const int32_t width : {257, 258, 259, 260, 275, 290, 514, 515})
        ExpectAllVariantsEqual(random, {nullptr, nullptr, width, 4, 3, 3, 0, 3}, kHardContents);
    // Lists of two and of four columns reach beyond the end of a strip.
    for (const int32_t mask : {4, 9, 15}) {
        for (const int32_t columns : {256, 257}) {
            ExpectAllVariantsEqual(random, {nullptr, nullptr, columns + mask, mask + 1, mask, mask, 0, mask},
                                   std::span(kHardContents).subspan(1));
        }
    }
}

TEST(MedianVariants, EveryRangeOfRowsGivesTheReferenceBits) {
    std::mt19937 random(20240504);
    for (const int32_t height : {1, 4, 5, 6, 7, 8, 9}) {
        for (int32_t first = -1; first <= height; ++first) {
            for (int32_t last = first - 1; last <= height; ++last)
                ExpectAllVariantsEqual(random, {nullptr, nullptr, 40, height, 5, 5, first, last},
                                       std::span(kHardContents).subspan(1));
        }
    }
}

// 16-bit counts would overflow: the window holds 67 600 pixels.
TEST(MedianVariants, HugeWindowsGiveTheirMiddleValue) {
    std::vector<uint16_t> source(261 * 261, 7);
    for (size_t i = 0; i < source.size() / 2; ++i) source[i] = 5;
    std::vector<uint16_t> out(source.size(), kGuard);
    // The middle of 261 x 261, the 34061st value, is the first 7 of the frame's middle row.
    for (const MedianVariant& variant : MedianVariants().subspan(1)) {
        FilterMedianWith(variant, {source.data(), out.data(), 261, 261, 261, 261, 0, 260});
        EXPECT_EQ(out[130 * 261 + 130], 7) << variant.name;
        EXPECT_EQ(out[130 * 261 + 129], kGuard) << variant.name;
    }
}

// What counting depends on: slopes along and across, so that the median wanders through the levels; areas of
// one level with specks, where one level holds most pixels; a few levels far from each other.
std::vector<std::vector<uint16_t>> MakeScenes(int32_t width, int32_t height) {
    std::mt19937 random(20240505);
    std::vector<std::vector<uint16_t>> scenes(5);
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const auto number = static_cast<int32_t>(random() >> 7U);
            scenes[0].push_back(static_cast<uint16_t>(300 * x + number % 64));
            scenes[1].push_back(static_cast<uint16_t>(65535 - 200 * y));
            scenes[2].push_back(number % 50 == 0 ? static_cast<uint16_t>(number / 64) : uint16_t{1000});
            scenes[3].push_back(static_cast<uint16_t>(number % 3 * 32767));
            scenes[4].push_back(static_cast<uint16_t>((x / 40 + y / 30) % 2 * 3000 + number % 900));
        }
    }
    return scenes;
}

TEST(MedianVariants, EveryWayOfCountingGivesTheSameBits) {
    struct Window {
        int32_t width;
        int32_t height;
    };
    constexpr int32_t kFrameWidth = 230;
    constexpr int32_t kFrameHeight = 140;
    const std::vector<std::vector<uint16_t>> scenes = MakeScenes(kFrameWidth, kFrameHeight);
    for (const Window window : {Window{1, 1},
                                {3, 3},
                                {2, 2},
                                {63, 63},
                                {64, 64},
                                {65, 65},
                                {129, 129},
                                {7, 90},
                                {90, 7},
                                {70, 100},
                                {229, 139},
                                {230, 140},
                                {230, 1},
                                {1, 140}}) {
        for (const std::vector<uint16_t>& scene : scenes) {
            const MedianCall call{nullptr,      nullptr,       kFrameWidth, kFrameHeight,
                                  window.width, window.height, 0,           kFrameHeight - 1};
            const std::vector<uint16_t> expected =
                RunForm({"", InstructionSet::Reference, FilterMedianHistogram}, scene, call);
            for (const MedianVariant& variant : MedianVariants().subspan(1)) {
                ASSERT_TRUE(expected == RunForm(variant, scene, call))
                    << variant.name << ", window " << window.width << " x " << window.height << ", scene "
                    << &scene - scenes.data();
            }
        }
    }
}

// A window of 65 x 65 on a slope across: its middle column's level, wherever it stands.
TEST(MedianVariants, LargeWindowOnASlopeGivesTheMiddleOfTheSlope) {
    constexpr int32_t kWidth = 300;
    constexpr int32_t kHeight = 70;
    std::vector<uint16_t> source(kWidth * kHeight);
    std::vector<uint16_t> expected(source.size(), kGuard);
    for (size_t i = 0; i < source.size(); ++i) {
        source[i] = static_cast<uint16_t>(i % kWidth * 200);
        const bool hasWindow =
            i / kWidth >= 32 && i / kWidth < 38 && i % kWidth >= 32 && i % kWidth < kWidth - 32;
        if (hasWindow) expected[i] = source[i];
    }
    for (const MedianVariant& variant : MedianVariants().subspan(1)) {
        std::vector<uint16_t> out(source.size(), kGuard);
        FilterMedianWith(variant, {source.data(), out.data(), kWidth, kHeight, 65, 65, 0, kHeight - 1});
        EXPECT_TRUE(out == expected) << variant.name;
    }
}

// With an odd number of pixels the middle one stays the middle one from the other end.
TEST(MedianVariants, InvertedFrameGivesTheInvertedMedians) {
    std::mt19937 random(20240506);
    std::vector<uint16_t> source = MakePixels(random, 200 * 150, Content::FullNoise);
    std::vector<uint16_t> inverted = source;
    for (uint16_t& pixel : inverted) pixel = static_cast<uint16_t>(65535 - pixel);
    const MedianCall call{nullptr, nullptr, 200, 150, 101, 101, 0, 149};
    const MedianVariant columns{"columns", InstructionSet::Reference, FilterMedianColumns};
    const std::vector<uint16_t> medians = RunForm(columns, source, call);
    const std::vector<uint16_t> ofInverted = RunForm(columns, inverted, call);
    for (int32_t y = 50; y < 100; ++y) {
        for (int32_t x = 50; x < 150; ++x) {
            const size_t i = kGuards + static_cast<size_t>(y * 200 + x);
            ASSERT_EQ(65535 - medians[i], ofInverted[i]) << x << ", " << y;
        }
    }
}

}  // namespace
}  // namespace vastrelline
