// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <limits>
#include <utility>

#include "operators/tile_equalise/ClaheEqualize.h"
#include "operators/tile_equalise/ClaheFrame.h"
#include "pixels/Border.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

Frame Equalized(Frame frame, int32_t blockSize, int32_t bins, double maxSlope,
                int32_t maxValue = kTwelveBits) {
    EXPECT_EQ(1, ClaheFrame(frame.Data(), frame.width, frame.height, maxValue, blockSize, bins, maxSlope));
    return frame;
}

// The same by way of a padded copy.
Frame EqualizedByCopy(Frame frame, int32_t padRight, int32_t padBottom, uint32_t tilesX, uint32_t tilesY,
                      int32_t bins, double maxSlope) {
    const auto [min, max] = std::minmax_element(frame.pixels.begin(), frame.pixels.end());
    auto padded =
        ExtendImage(frame.Data(), frame.width, frame.height, padRight, padBottom, BorderMode::BorderTrailing);
    const int32_t width = frame.width + padRight;
    const int32_t height = frame.height + padBottom;
    EXPECT_EQ(0,
              ClaheEqualize(padded->data(), static_cast<uint32_t>(width), static_cast<uint32_t>(height), *min,
                            *max, tilesX, tilesY, static_cast<uint32_t>(bins), maxSlope, kTwelveBits));
    CropImage(padded->data(), frame.Data(), width, height, padRight, padBottom, BorderMode::BorderTrailing);
    return frame;
}

TEST(ClaheFrame, FrameOfWholeTilesGetsATileMoreOnBothAxes) {
    const Frame frame = Noise(128, 128, kTwelveBits, 1);
    EXPECT_THAT(Equalized(frame, 64, 256, 1.5), EqualsFrame(EqualizedByCopy(frame, 64, 64, 3, 3, 256, 1.5)));
}

TEST(ClaheFrame, OtherFramesAreFilledUpToWholeTiles) {
    const Frame frame = Noise(50, 33, kTwelveBits, 2);
    EXPECT_THAT(Equalized(frame, 16, 20, 2.5), EqualsFrame(EqualizedByCopy(frame, 14, 15, 4, 3, 20, 2.5)));
    EXPECT_THAT(Equalized(frame, 7, 20, 2.5), EqualsFrame(EqualizedByCopy(frame, 6, 2, 8, 5, 20, 2.5)));
}

TEST(ClaheFrame, NoBinsMeanAHundredAndTwentyEight) {
    const Frame frame = Noise(40, 40, kTwelveBits, 3);
    EXPECT_THAT(Equalized(frame, 16, 0, 1.5), EqualsFrame(Equalized(frame, 16, 128, 1.5)));
    EXPECT_FALSE(Equalized(frame, 16, 0, 1.5) == Equalized(frame, 16, 256, 1.5));
}

// Nothing is clipped by any of these, with tiles of 256 pixels.
TEST(ClaheFrame, SlopesWithoutALimitAreAlike) {
    const Frame frame = Noise(40, 40, 200, 4);
    const Frame expected = Equalized(frame, 16, 8, 0.0);
    EXPECT_FALSE(frame == expected);
    for (const double maxSlope : {-1.0, -1e308, 8.0, 1e308, std::numeric_limits<double>::infinity(),
                                  std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_THAT(Equalized(frame, 16, 8, maxSlope), EqualsFrame(expected)) << maxSlope;
    }
}

TEST(ClaheFrame, SlopeOfExactlyOneChangesNothing) {
    const Frame frame = Noise(40, 40, kTwelveBits, 5);
    EXPECT_THAT(Equalized(frame, 16, 64, 1.0), EqualsFrame(frame));
    EXPECT_FALSE(Equalized(frame, 16, 64, 1.0000001) == frame);
}

TEST(ClaheFrame, KeysThatMakeNoTilesOrTooManyBinsChangeNothing) {
    const Frame frame = Noise(40, 30, kTwelveBits, 6);
    // The height of the frame has room for one tile of 31.
    for (const int32_t blockSize : {0, -64, INT_MIN, INT_MAX, 31})
        EXPECT_THAT(Equalized(frame, blockSize, 256, 1.5), EqualsFrame(frame)) << "block " << blockSize;
    for (const int32_t bins : {-1, INT_MIN, INT_MAX})
        EXPECT_THAT(Equalized(frame, 8, bins, 1.5), EqualsFrame(frame)) << "bins " << bins;
}

// A block as high as the frame leaves room for a second tile, all of it border.
TEST(ClaheFrame, BlockOfTheFramesHeightWorks) {
    const Frame frame = Noise(40, 30, kTwelveBits, 7);
    EXPECT_THAT(Equalized(frame, 30, 16, 1.5), EqualsFrame(EqualizedByCopy(frame, 20, 30, 2, 2, 16, 1.5)));
}

TEST(ClaheFrame, SmallAndFlatFramesStay) {
    for (const auto& [width, height] : {std::pair(1, 1), {1, 9}, {9, 1}, {2, 2}, {40, 24}}) {
        for (const int32_t level : {0, 1000, kTwelveBits}) {
            const Frame frame = Flat(width, height, static_cast<uint16_t>(level));
            for (const int32_t blockSize : {1, 2, 8})
                EXPECT_THAT(Equalized(frame, blockSize, 256, 1.5), EqualsFrame(frame));
        }
    }
}

TEST(ClaheFrame, ResultKeepsTheRangeOfTheFrame) {
    Frame frame = Noise(70, 50, 1000, 8);
    for (uint16_t& pixel : frame.pixels) pixel = static_cast<uint16_t>(pixel + 300);
    const auto [low, high] = std::minmax_element(frame.pixels.begin(), frame.pixels.end());
    for (const int32_t blockSize : {1, 2, 3, 9, 16}) {
        for (const int32_t bins : {1, 16, 300}) {
            const Frame equalized = Equalized(frame, blockSize, bins, 3.0);
            const auto [min, max] = std::minmax_element(equalized.pixels.begin(), equalized.pixels.end());
            EXPECT_LE(*low, *min);
            EXPECT_GE(*high, *max);
        }
    }
}

// The darkest pixel counts as at most maxValue: with 0 the levels start at 0.
TEST(ClaheFrame, RangeStartsAtMaxValueAtMost) {
    Frame frame = Flat(8, 8, 100);
    frame.At(0, 0) = 101;
    // In one bin of 0..101, all pixels of a tile are at its top.
    EXPECT_THAT(Equalized(frame, 4, 1, 0.0, 0), EqualsFrame(Flat(8, 8, 101)));
}

}  // namespace
}  // namespace vastrelline
