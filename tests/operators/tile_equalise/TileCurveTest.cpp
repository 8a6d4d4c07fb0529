// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

#include "operators/tile_equalise/TileCurve.h"

namespace vastrelline {
namespace {

using Bins = std::vector<uint32_t>;

struct ClipCase {
    const char* name;
    uint32_t clip;
    Bins block;
    Bins expected;
};

const ClipCase kClipCases[] = {

    {"NothingAboveTheLimit", 3, {1, 2, 3}, {1, 2, 3}},
    // 6 too many: each other bin gets 1, and the 3 that are left go to them in a walk by 1.
    {"EvenShareThenWalk", 2, {8, 0, 0, 0}, {2, 2, 2, 2}},
    // 5 too many, 1 each; of the 2 left bin 2 gets one in the walk by 2 from bin 0, nobody in the walk by
    // 4 from bin 1, and bin 2 the last in the walk from itself.
    {"WalkIsSteppedAnewFromEveryStart", 4, {9, 3, 0, 0}, {4, 4, 3, 1}},
    // 12 too many, 3 each; bin 1 takes but the 1 it lacks, so 5 are left: 2, 2 and 1 by walks from bins
    // 0, 1 and 2.
    {"NearTheLimitABinTakesWhatItLacks", 8, {20, 7, 0, 0}, {8, 8, 6, 5}},
    // 8 too many, 2 each; of the 2 left bin 2 gets one in the walk by 2, bin 1 one in the walk by 4.
    {"AllInOneBinIsSpreadOverAll", 8, {16, 0, 0, 0}, {8, 3, 3, 2}},
    {"WhatNoBinCanTakeIsLost", 3, {10, 10}, {3, 3}},
    // The share of 24 is beyond the limit of 2, and yet it is given.
    {"ShareBeyondTheLimit", 2, {100, 0, 0, 0}, {2, 24, 24, 24}},
    {"OneBin", 5, {7}, {5}},
};

TEST(ClipHistogram, GivesTheHandComputedBins) {
    for (const ClipCase& test : kClipCases) {
        Bins block = test.block;
        ClipHistogram(block, test.clip);
        EXPECT_EQ(test.expected, block) << test.name;
    }
}

// The clipping step by step, with every walk walked.
void ClipStepByStep(Bins& block, uint32_t clip) {
    const auto bins = static_cast<uint32_t>(block.size());
    uint32_t excess = 0;
    for (const uint32_t bin : block) {
        if (bin > clip) excess += bin - clip;
    }
    const uint32_t increment = excess / bins;
    const uint32_t upper = clip - increment;
    for (uint32_t& bin : block) {
        if (bin > clip) {
            bin = clip;
        } else if (bin > upper) {
            excess -= clip - bin;
            bin = clip;
        } else {
            excess -= increment;
            bin += increment;
        }
    }
    uint32_t before = excess + 1;
    while (excess != 0 && excess != before) {
        before = excess;
        for (uint32_t start = 0; start < bins && excess != 0; ++start) {
            const uint32_t step = std::max(bins / excess, 1U);
            for (uint32_t bin = start; bin < bins && excess != 0; bin += step) {
                if (block[bin] >= clip) continue;
                ++block[bin];
                --excess;
            }
        }
    }
}

TEST(ClipHistogram, LeavingOutUselessWalksChangesNothing) {
    std::mt19937 random(20240501);
    for (int32_t round = 0; round < 600; ++round) {
        const size_t bins = 1 + random() % (round % 10 == 0 ? 300 : 40);
        const auto clip = static_cast<uint32_t>(1 + random() % 30);
        // Mostly full bins make walks that meet none; a few far above the limit make the excess.
        const uint32_t fullShare = static_cast<uint32_t>(random() % 101);
        Bins block(bins);
        for (uint32_t& bin : block) {
            bin = static_cast<uint32_t>(random() % 100 < fullShare ? clip : random() % (clip + 1));
            if (random() % 20 == 0) bin += static_cast<uint32_t>(random() % (3 * bins));
        }
        Bins expected = block;
        ClipStepByStep(expected, clip);
        ClipHistogram(block, clip);
        ASSERT_EQ(expected, block) << "round " << round << ", clip " << clip;
    }
}

// Walked step by step this would take hours: in each of 1000 rounds only the first of 60000 starts meets the
// one bin that is not full.
TEST(ClipHistogram, OneOpenBinAtTheStartDoesNotHang) {
    constexpr uint32_t kClip = 1000;
    Bins block(60000, kClip);
    block.front() = 0;
    block.back() += 50000;
    ClipHistogram(block, kClip);
    EXPECT_EQ(Bins(60000, kClip), block);
}

TEST(MapHistogram, CurveIsTheScaledSum) {
    Bins block = {1, 1, 0, 2};
    MapHistogram(block, 10, 110, 4);
    EXPECT_EQ((Bins{35, 60, 60, 110}), block);
}

// 0.7 as a 32-bit float is a little below 0.7, and ten times it below 7.
TEST(MapHistogram, ScaleIsHeldInSinglePrecision) {
    Bins block = {10};
    MapHistogram(block, 0, 7, 10);
    EXPECT_EQ(Bins{6}, block);
}

TEST(MapHistogram, SumsBeyondTheTileAreClampedToTheTop) {
    Bins block = {3, 2, 4000000000U};
    MapHistogram(block, 5, 65535, 3);
    EXPECT_EQ((Bins{65535, 65535, 65535}), block);
}

}  // namespace
}  // namespace vastrelline
