// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "sensor/SpotCorrection.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

Frame BoxMeanOf(const Frame& frame, int32_t maskSize) {
    Frame mean = Flat(frame.width, frame.height, 7);
    SquareBoxMean(mean.Data(), frame.Data(), maskSize, frame.width, frame.height);
    return mean;
}

Frame Corrected(Frame frame, float strength = 1.5F) {
    ApplySpotCorrection(frame.Data(), 15, frame.width, frame.height, strength);
    return frame;
}

TEST(SquareBoxMean, BandIsOneWiderAtTheLeftAndTheTop) {
    // Of 7 by 7 pixels those from 2 to 5 have a square; nine pixels of 90 are divided by 9.
    const Frame frame = Flat(7, 7, 90);
    Frame impulse = Impulse(7, 7, 1, 1, 900);
    EXPECT_THAT(BoxMeanOf(frame, 3), EqualsFrame(frame));
    Frame expected = impulse;
    expected.At(2, 2) = 100;
    EXPECT_THAT(BoxMeanOf(impulse, 3), EqualsFrame(expected));
    impulse = Impulse(7, 7, 5, 5, 900);
    expected = Flat(7, 7, 0);
    for (const int32_t y : {4, 5})
        for (const int32_t x : {4, 5}) expected.At(x, y) = 100;
    EXPECT_THAT(BoxMeanOf(impulse, 3), EqualsFrame(expected));
}

TEST(SquareBoxMean, RoundsDown) {
    Frame frame = Flat(5, 5, 0);
    frame.At(2, 2) = 17;
    EXPECT_EQ(BoxMeanOf(frame, 3).At(2, 2), 1);
}

// The square has a side of 3, the divisor stays 2 * 2.
TEST(SquareBoxMean, EvenMaskDividesByItsOwnSquare) { EXPECT_EQ(BoxMeanOf(Flat(5, 5, 8), 2).At(2, 2), 18); }

TEST(SquareBoxMean, FrameBelow16PixelsIsCopied) {
    for (const auto& [width, height] : {std::pair{15, 40}, {40, 15}, {15, 15}, {1, 1}, {1, 50}}) {
        const Frame frame = Noise(width, height, 4095, 1);
        EXPECT_THAT(BoxMeanOf(frame, 15), EqualsFrame(frame));
    }
    Frame frame = Flat(16, 16, 0);
    frame.At(8, 8) = 450;
    Frame expected = frame;
    expected.At(8, 8) = 2;
    EXPECT_THAT(BoxMeanOf(frame, 15), EqualsFrame(expected));
}

TEST(SquareBoxMean, MaskWithoutASideCopies) {
    const Frame frame = Noise(9, 9, 4095, 1);
    for (const int32_t maskSize : {0, -1, INT32_MIN, INT32_MAX})
        EXPECT_THAT(BoxMeanOf(frame, maskSize), EqualsFrame(frame));
    EXPECT_THAT(BoxMeanOf(frame, 1), EqualsFrame(frame));
}

TEST(SquareBoxMean, IsTheMeanOfEverySquare) {
    const Frame frame = Noise(31, 23, 65535, 2);
    const Frame mean = BoxMeanOf(frame, 5);
    for (int32_t y = 3; y < 23 - 2; ++y) {
        for (int32_t x = 3; x < 31 - 2; ++x) {
            int64_t sum = 0;
            for (int32_t v = y - 2; v <= y + 2; ++v)
                for (int32_t u = x - 2; u <= x + 2; ++u) sum += frame.At(u, v);
            ASSERT_EQ(mean.At(x, y), sum / 25) << x << ", " << y;
        }
    }
}

TEST(InvertToBuffer, CountsDownFromThePeak) {
    const std::vector<uint16_t> frame = {0, 10, 100, 101};
    std::vector<uint16_t> inverse(4);
    InvertToBuffer(frame.data(), inverse.data(), 100, 4);
    EXPECT_EQ(inverse, (std::vector<uint16_t>{100, 90, 0, 65535}));
}

// By hand, in a frame that is all border band: the peak is 100, the half 50, and the exponent 1.5^e of a
// level v has e = (50 - (100 - v)) / 50. For 25: 1.5^-0.5 = 0.8165, 0.25^0.8165 = 0.3224. For 75: 1.5^0.5 =
// 1.2247, 0.75^1.2247 = 0.7031.
TEST(SpotCorrection, LiftsDarkPixelsAndLowersBrightOnes) {
    EXPECT_THAT(Corrected(FromRows({{0, 25, 50, 75, 100}})), EqualsFrame(FromRows({{0, 32, 50, 70, 100}})));
}

TEST(SpotCorrection, StrengthHasNoEffect) {
    const Frame frame = Noise(20, 20, 4095, 3);
    EXPECT_THAT(Corrected(frame, 0.0F), EqualsFrame(Corrected(frame)));
    EXPECT_THAT(Corrected(frame, -7.0F), EqualsFrame(Corrected(frame)));
}

// A pixel of 25 amid 100: its own inverse is 75, the mean of 224 zeroes and 75 is 0. With e = 1 the exponent
// is 1.5 and 0.25^1.5 = 0.125.
TEST(SpotCorrection, ExponentFollowsTheNeighbourhood) {
    Frame frame = Flat(31, 31, 100);
    frame.At(15, 15) = 25;
    Frame expected = frame;
    expected.At(15, 15) = 12;
    EXPECT_THAT(Corrected(frame), EqualsFrame(expected));
}

TEST(SpotCorrection, FrameOfOneLevelStays) {
    for (const int32_t level : {0, 1, 2, 3, 4095, 65535}) {
        const Frame frame = Flat(20, 20, static_cast<uint16_t>(level));
        EXPECT_THAT(Corrected(frame), EqualsFrame(frame)) << level;
    }
}

TEST(SpotCorrection, PeakOfOneLeavesTheFrame) {
    const Frame frame = Impulse(20, 20, 3, 4, 1);
    EXPECT_THAT(Corrected(frame), EqualsFrame(frame));
}

TEST(SpotCorrection, BlackAndThePeakStay) {
    Frame frame = Noise(40, 30, 4095, 4);
    frame.At(20, 15) = 0;
    frame.At(10, 12) = 4095;
    const Frame corrected = Corrected(frame);
    EXPECT_EQ(corrected.At(20, 15), 0);
    EXPECT_EQ(corrected.At(10, 12), 4095);
}

TEST(SquareBoxMean, SquareWhoseSumPasses31BitsIsDividedExactly) {  // 183 * 183 * 65535 > 2^31
    const Frame frame = Flat(190, 190, 65535);
    EXPECT_THAT(BoxMeanOf(frame, 183), EqualsFrame(frame));
}

// The mean of the inverse around a pixel, summed anew.
int64_t PlainMean(const Frame& inverse, int32_t maskSize, int32_t x, int32_t y) {
    const int32_t r = maskSize / 2;
    if (maskSize < 1 || y <= r || x <= r || y >= inverse.height - r || x >= inverse.width - r)
        return inverse.At(x, y);
    int64_t sum = 0;
    for (int32_t v = y - r; v <= y + r; ++v)
        for (int32_t u = x - r; u <= x + r; ++u) sum += inverse.At(u, v);
    return sum / (maskSize * maskSize);
}

TEST(SpotCorrection, EveryPixelTakesItsOwnExponent) {
    for (const int32_t maskSize : {-1, 1, 2, 4, 5, 15, 16}) {
        for (const auto& [width, height] : {std::pair{16, 16}, {17, 40}, {33, 18}, {40, 15}, {1, 50}}) {
            const Frame frame = Noise(width, height, 4095, 6);
            const int32_t peak = *std::max_element(frame.pixels.begin(), frame.pixels.end());
            const int32_t half = peak / 2;
            Frame inverse = frame;
            for (uint16_t& pixel : inverse.pixels) pixel = static_cast<uint16_t>(peak - pixel);
            Frame expected = frame;
            for (int32_t y = 0; y < height; ++y) {
                for (int32_t x = 0; x < width; ++x) {
                    const float e = static_cast<float>(half - PlainMean(inverse, maskSize, x, y)) /
                                    static_cast<float>(half);
                    const float share = static_cast<float>(frame.At(x, y)) / static_cast<float>(peak);
                    expected.At(x, y) =
                        static_cast<uint16_t>(static_cast<double>(std::pow(share, std::pow(1.5F, e))) * peak);
                }
            }
            Frame corrected = frame;
            ApplySpotCorrection(corrected.Data(), maskSize, width, height, 1.5F);
            EXPECT_THAT(corrected, EqualsFrame(expected)) << maskSize << ' ' << width << " x " << height;
        }
    }
}

}  // namespace
}  // namespace vastrelline
