// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>

#include "operators/tile_equalise/ClaheEqualize.h"
#include "operators/tile_equalise/ClaheTiles.h"
#include "platform/InstructionSet.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;
constexpr double kNoClip = 0.0;

struct Arguments {
    uint16_t min;
    uint16_t max;
    uint32_t tilesX;
    uint32_t tilesY;
    uint32_t bins;
    double maxSlope;
};

struct StatusCase {
    const char* name;
    Arguments arguments;
    int32_t expected;
};

constexpr StatusCase kStatusCases[] = {
    {"WidthFirst", {9, 9, 4, 3, 8, 2.0}, -3},
    {"NoTilesAcross", {0, 9, 0, 2, 8, 2.0}, -3},
    {"Height", {9, 9, 1, 3, 8, 2.0}, -4},
    {"RangeBeforeTiles", {9, 9, 1, 1, 8, 2.0}, -6},
    {"RangeReversed", {10, 9, 2, 2, 8, 2.0}, -6},
    {"OneTileAcross", {0, 9, 1, 2, 8, 1.0}, -7},
    {"OneTileDown", {0, 9, 2, 1, 8, 2.0}, -7},
    {"SlopeOfOneComesBeforeMemory", {0, 9, 2, 2, UINT32_MAX, 1.0}, 0},
    {"BinsBeyondMemory", {0, 9, 2, 2, UINT32_MAX, 2.0}, -8},
    {"BinsBeyondOneTile", {0, 9, 2, 2, (1U << 20) + 1, 2.0}, -8},
};

TEST(ClaheEqualize, RefusalHasItsStatusAndLeavesTheFrame) {
    const Frame original = Noise(6, 4, kTwelveBits, 1);
    for (const StatusCase& test : kStatusCases) {
        Frame frame = original;
        const Arguments& a = test.arguments;
        EXPECT_EQ(test.expected, ClaheEqualize(frame.Data(), 6, 4, a.min, a.max, a.tilesX, a.tilesY, a.bins,
                                               a.maxSlope, kTwelveBits))
            << test.name;
        EXPECT_THAT(frame, EqualsFrame(original)) << test.name;
    }
}

// Equalizes the frame in each form that the machine has.
void ExpectEqualized(const Frame& frame, const Arguments& a, const Frame& expected) {
    for (const ClaheVariant& variant : ClaheVariants()) {
        SCOPED_TRACE(variant.name);
        const ScopedInstructionSet limit(variant.needs);
        Frame equalized = frame;
        EXPECT_EQ(kClaheFinished, ClaheEqualize(equalized.Data(), static_cast<uint32_t>(frame.width),
                                                static_cast<uint32_t>(frame.height), a.min, a.max, a.tilesX,
                                                a.tilesY, a.bins, a.maxSlope, kTwelveBits));
        EXPECT_THAT(equalized, EqualsFrame(expected));
    }
}

// Two bins, of levels 0 and 1 and of 2 and 3. The curves of the tiles of four pixels are 3 3 (all low), 0 3
// (one low), 1 3 (two low) and 0 3 (none low).
TEST(ClaheEqualize, PixelsTakeTheWeightedMeanOfFourCurves) {
    const Frame frame = FromRows({{0, 0, 3, 3},  //
                                  {0, 1, 0, 3},
                                  {0, 0, 3, 3},
                                  {2, 3, 3, 2}});
    // (2, 1) stands half-way between the upper tiles: 2 * (3 + 0) / 4. (0, 2) and (1, 2) stand half-way
    // between the left ones: (3 + 1) / 2 and (2 * 3 + 2 * 1) / 4.
    const Frame expected = FromRows({{3, 3, 3, 3},  //
                                     {3, 3, 1, 3},
                                     {2, 2, 3, 3},
                                     {3, 3, 3, 3}});
    ExpectEqualized(frame, {0, 3, 2, 2, 2, kNoClip}, expected);
}

// One bin maps every pixel to the top, so that a 0 shows a pixel that was not mapped. The patches of tiles of
// 3 x 3 are 1, 3 and 1 wide; the second row of patches starts at the last pixel of row 0, the third at the
// last but one of row 3.
TEST(ClaheEqualize, OddTilesLeaveGapsAndTheLastRow) {
    const Frame expected = FromRows({{9, 9, 9, 9, 9, 9},
                                     {9, 9, 9, 9, 0, 9},
                                     {9, 9, 9, 9, 0, 9},
                                     {9, 9, 9, 9, 9, 9},
                                     {9, 9, 9, 0, 0, 0},
                                     {0, 0, 0, 0, 0, 0}});
    ExpectEqualized(Flat(6, 6, 0), {0, 9, 2, 2, 1, kNoClip}, expected);
}

// Patches of half a tile are empty, and the one row of patches begins one pixel before the frame.
TEST(ClaheEqualize, TilesOfOnePixelStartBeforeTheFrame) {
    ExpectEqualized(Flat(3, 2, 0), {0, 9, 3, 2, 1, kNoClip}, FromRows({{9, 0, 0}, {0, 0, 0}}));
}

// 2^17 pixels of 65535 add up to 2^33 - 2^17, of which 2^32 - 2^17 is left: 32767 times 2^17. The narrower
// patches have half as many pixels, and nothing wraps.
TEST(ClaheEqualize, SumsOfLargeTilesWrap) {
    constexpr int32_t kTileWidth = 512;
    constexpr int32_t kTileHeight = 256;
    Frame expected = Flat(2 * kTileWidth, 2 * kTileHeight, 65535);
    for (int32_t y = kTileHeight / 2; y < kTileHeight * 3 / 2; ++y)
        for (int32_t x = kTileWidth / 2; x < kTileWidth * 3 / 2; ++x) expected.At(x, y) = 32767;
    ExpectEqualized(Flat(2 * kTileWidth, 2 * kTileHeight, 0), {0, 65535, 2, 2, 1, 2.0}, expected);
}

// Clamped to 10..13, half of each tile falls into the first and half into the last of four bins: the curves
// are 11 11 11 13 (10 + 0.75 * 2 and 10 + 0.75 * 4).
TEST(ClaheEqualize, LevelsOutsideTheRangeCountAsItsEnds) {
    const Frame frame = FromRows({{0, 14, 9, 65535},  //
                                  {65535, 9, 14, 0},
                                  {10, 13, 9, 14},
                                  {13, 10, 14, 9}});
    const Frame expected = FromRows({{11, 13, 11, 13},  //
                                     {13, 11, 13, 11},
                                     {11, 13, 11, 13},
                                     {13, 11, 13, 11}});
    ExpectEqualized(frame, {10, 13, 2, 2, 4, kNoClip}, expected);
}

// Tiles of 2 x 2 with two bins: a slope of 1.5 clips at 3, one of 0.4 at 0 and so at 1.
TEST(ClaheEqualize, ClipIsTruncatedAndAtLeastOne) {
    const Frame frame = Flat(4, 4, 0);
    // {4, 0} becomes {3, 1}: 9 * 3 / 4 = 6.75.
    ExpectEqualized(frame, {0, 9, 2, 2, 2, 1.5}, Flat(4, 4, 6));
    // The share of 3 / 2 = 1 reaches the limit: {1, 1}. 9 * 1 / 4 = 2.25.
    ExpectEqualized(frame, {0, 9, 2, 2, 2, 0.4}, Flat(4, 4, 2));
}

// A tile of 130 x 128 has 16640 pixels, all in the first of two bins: 256 above the limit of 16384, which the
// other bin gets. 0.1 * 16384 is 1638.4; without the limit the curve would start at 1664.
TEST(ClaheEqualize, SlopeOfZeroClipsAt16384) {
    ExpectEqualized(Flat(260, 256, 0), {0, 1664, 2, 2, 2, kNoClip}, Flat(260, 256, 1638));
}

}  // namespace
}  // namespace vastrelline
