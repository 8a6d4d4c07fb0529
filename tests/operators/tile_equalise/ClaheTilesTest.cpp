// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

#include "operators/tile_equalise/ClaheEqualize.h"
#include "operators/tile_equalise/ClaheTiles.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr size_t kGuards = 16;
constexpr uint16_t kGuard = 0xA5C3;

enum class Content { Extremes, Noise, NarrowNoise, AllTop };

std::vector<uint16_t> MakePixels(std::mt19937& random, const ClaheCall& call, Content content) {
    const size_t count = size_t{call.width} * call.height;
    std::vector<uint16_t> pixels(count + 2 * kGuards, kGuard);
    const uint32_t range = uint32_t{call.max} - call.min;
    for (size_t i = kGuards; i < kGuards + count; ++i) {
        const auto number = static_cast<uint32_t>(random() >> 7U);
        uint32_t above = 0;
        if (content == Content::Extremes) above = number % 2 * range;
        if (content == Content::Noise) above = number % (range + 1);
        if (content == Content::NarrowNoise) above = (number % 8 + number / 8 % 8) * range / 20;
        if (content == Content::AllTop) above = range;
        pixels[i] = static_cast<uint16_t>(call.min + above);
    }
    return pixels;
}

std::vector<uint16_t> Run(const ClaheVariant& variant, ClaheCall call, std::vector<uint16_t> pixels) {
    call.pixels = pixels.data() + kGuards;
    variant.run(call);
    return pixels;
}

void ExpectAllVariantsEqual(std::mt19937& random, const ClaheCall& call) {
    for (const Content content : {Content::Extremes, Content::Noise, Content::NarrowNoise, Content::AllTop}) {
        const std::vector<uint16_t> pixels = MakePixels(random, call, content);
        const std::span<const ClaheVariant> variants = ClaheVariants();
        const std::vector<uint16_t> expected = Run(variants.front(), call, pixels);
        for (const ClaheVariant& variant : variants.subspan(1)) {
            ASSERT_EQ(expected, Run(variant, call, pixels))
                << variant.name << ' ' << call.width << '+' << call.padRight << " x " << call.height << '+'
                << call.padBottom << ", tiles " << call.tilesX << " x " << call.tilesY << ", bins "
                << call.bins << ", clip " << call.clip << ", content " << static_cast<int>(content);
        }
    }
}

ClaheCall MakeCall(uint32_t tileWidth, uint32_t tileHeight, uint32_t tilesX, uint32_t tilesY,
                   uint32_t padRight, uint32_t padBottom, uint32_t bins) {
    return {.pixels = nullptr,
            .width = tileWidth * tilesX - padRight,
            .height = tileHeight * tilesY - padBottom,
            .padRight = padRight,
            .padBottom = padBottom,
            .min = 100,
            .max = 4095,
            .tilesX = tilesX,
            .tilesY = tilesY,
            .bins = bins,
            .clip = 1 + 2 * tileWidth * tileHeight / bins};
}

TEST(ClaheVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(ClaheVariants, {"scalar", "baseline", "avx2"});
}

TEST(ClaheVariants, TheLastOneRuns) {
    std::vector<uint16_t> pixels(16 * 16, 200);
    ClaheCall call = MakeCall(8, 8, 2, 2, 0, 0, 16);
    call.pixels = pixels.data();
    ExpectLastFormRuns(ClaheVariants, 1, [&] { EXPECT_EQ(RunClaheTiles(call, 2.0), kClaheFinished); });
}

// Odd and even edges, from one pixel past two vectors, alike and not.
TEST(ClaheVariants, EveryTileEdgeGivesTheReferenceBits) {
    std::mt19937 random(20240501);
    for (const uint32_t edge : {1U, 2U, 3U, 4U, 5U, 7U, 8U, 9U, 15U, 16U, 17U, 31U, 32U, 33U, 34U, 35U}) {
        ExpectAllVariantsEqual(random, MakeCall(edge, 6, 2, 2, 0, 0, 16));
        ExpectAllVariantsEqual(random, MakeCall(5, edge, 3, 2, 0, 0, 16));
        ExpectAllVariantsEqual(random, MakeCall(edge, edge, 3, 2, edge / 2, edge / 3, 64));
        if (HasFatalFailure()) return;
    }
}

TEST(ClaheVariants, EveryBorderGivesTheReferenceBits) {
    std::mt19937 random(20240502);
    for (uint32_t pad = 0; pad <= 9; ++pad) {
        // Up to a whole row and column of tiles outside the frame, with an odd and an even edge.
        ExpectAllVariantsEqual(random, MakeCall(9, 9, 2, 3, pad, 9 - pad, 10));
        ExpectAllVariantsEqual(random, MakeCall(10, 10, 3, 2, pad + 1, 10 - pad, 10));
    }
}

TEST(ClaheVariants, EveryNumberOfBinsGivesTheReferenceBits) {
    std::mt19937 random(20240503);
    for (const uint32_t bins : {1U, 2U, 3U, 7U, 128U, 255U, 256U, 257U, 1000U, 4000U, 70000U})
        ExpectAllVariantsEqual(random, MakeCall(18, 18, 2, 2, 5, 3, bins));
}

TEST(ClaheVariants, EveryRangeGivesTheReferenceBits) {
    std::mt19937 random(20240504);
    for (const int32_t max : {1, 255, 32767, 32768, 60000, 65535}) {
        for (const uint32_t bins : {5U, 256U, 300U}) {
            ClaheCall call = MakeCall(16, 16, 2, 2, 1, 1, bins);
            call.min = 0;
            call.max = static_cast<uint16_t>(max);
            ExpectAllVariantsEqual(random, call);
            call.min = static_cast<uint16_t>(max - 1);
            ExpectAllVariantsEqual(random, call);
        }
    }
}

// The most pixels of a patch whose weights fit 16 bits, and one more, in one row of tiles, in one column and
// in near squares. 32767 is 217 * 151, and 181 * 181 is 32761.
TEST(ClaheVariants, BothSidesOfTheLargestWeightsGiveTheReferenceBits) {
    std::mt19937 random(20240505);
    const std::pair<uint32_t, uint32_t> edges[] = {{217, 151}, {151, 217}, {256, 128}, {128, 256},
                                                   {32767, 1}, {16384, 2}, {181, 181}, {182, 182}};
    for (const auto& [tileWidth, tileHeight] : edges) {
        ClaheCall call = MakeCall(tileWidth, tileHeight, 2, 2, tileWidth / 5, tileHeight / 6, 256);
        for (const int32_t max : {4095, 65535}) {
            call.max = static_cast<uint16_t>(max);
            ExpectAllVariantsEqual(random, call);
        }
        if (HasFatalFailure()) return;
    }
}

// Sums of weighted levels just below and at or above 2^31 and 2^32, by the brightest level; with even and odd
// edges and with a power of two of pixels.
TEST(ClaheVariants, BothSidesOfTheLargestSumGiveTheReferenceBits) {
    std::mt19937 random(20240507);
    for (const uint32_t edge : {182U, 183U, 256U, 299U, 300U}) {
        ClaheCall call = MakeCall(edge, edge, 2, 2, 40, 30, 256);
        for (const uint64_t border : {uint64_t{1} << 31U, uint64_t{1} << 32U}) {
            const uint64_t below = (border - 1) / (edge * edge);
            for (const uint64_t max : {below, below + 1}) {
                call.max = static_cast<uint16_t>(std::min<uint64_t>(max, 65535));
                ExpectAllVariantsEqual(random, call);
            }
        }
        call.min = 65534;
        call.max = 65535;
        ExpectAllVariantsEqual(random, call);
        if (HasFatalFailure()) return;
    }
}

TEST(ClaheVariants, EveryNumberOfBinsInLargeTilesGivesTheReferenceBits) {
    std::mt19937 random(20240508);
    for (const uint32_t bins : {1U, 8U, 255U, 256U, 257U, 4096U, 65536U})
        for (const int32_t max : {255, 4095, 65535}) {
            ClaheCall call = MakeCall(200, 190, 2, 2, 77, 3, bins);
            call.max = static_cast<uint16_t>(max);
            ExpectAllVariantsEqual(random, call);
            if (HasFatalFailure()) return;
        }
}

// The frame ends in the first tile of each row, of each column or of both.
TEST(ClaheVariants, FrameNarrowerThanALargeTileGivesTheReferenceBits) {
    std::mt19937 random(20240509);
    for (const uint32_t edge : {256U, 257U, 1000U})
        for (const uint32_t side : {1U, 100U, 255U}) {
            ExpectAllVariantsEqual(random, MakeCall(edge, edge, 2, 2, 2 * edge - side, 2 * edge - side, 256));
            ExpectAllVariantsEqual(random, MakeCall(edge, edge, 2, 2, 2 * edge - side, 20, 256));
            ExpectAllVariantsEqual(random, MakeCall(edge, edge, 2, 2, 20, 2 * edge - side, 256));
            if (HasFatalFailure()) return;
        }
}

// The most columns whose shares fit 16 bits, and one more.
TEST(ClaheVariants, BothSidesOfTheWidestTileGiveTheReferenceBits) {
    std::mt19937 random(20240510);
    for (const uint32_t tileWidth : {32767U, 32768U})
        for (const uint32_t tileHeight : {1U, 2U, 3U})
            ExpectAllVariantsEqual(random, MakeCall(tileWidth, tileHeight, 2, 2, 30000, 1, 256));
}

// Rows of patches slip by more than the width of the frame.
TEST(ClaheVariants, LongNarrowFrameOfOddTilesGivesTheReferenceBits) {
    std::mt19937 random(20240506);
    ExpectAllVariantsEqual(random, MakeCall(3, 3, 2, 60, 2, 1, 9));
    ExpectAllVariantsEqual(random, MakeCall(3, 1, 2, 60, 0, 0, 9));
    ExpectAllVariantsEqual(random, MakeCall(1, 1, 2, 60, 0, 0, 9));
}

}  // namespace
}  // namespace vastrelline
