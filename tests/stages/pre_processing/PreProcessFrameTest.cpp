// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include "operators/median/MedianWindow.h"
#include "stages/pre_processing/PreProcessFrame.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

Frame Processed(Frame frame, const PreProcessingParams& params = {}, int32_t maxValue = kTwelveBits) {
    PreProcessFrame(frame.Data(), frame.width, frame.height, maxValue, params);
    return frame;
}

TEST(PreProcessFrame, BlackFrameComesOutAtTheStartOfTheFloor) {
    EXPECT_THAT(Processed(Flat(6, 5, 0)), EqualsFrame(Flat(6, 5, 4095)));
    EXPECT_THAT(Processed(Flat(6, 5, 0), {}, 255), EqualsFrame(Flat(6, 5, 4095)));
}

TEST(PreProcessFrame, PixelsOf4095AndAboveLeaveTheFloorThere) {
    EXPECT_THAT(Processed(Flat(6, 5, 5000), {}, 65535), EqualsFrame(Flat(6, 5, 5000)));
    // The single pixel has a median of 0 around it, and the floor is above what the boost leaves.
    Frame frame = Flat(6, 5, 0);
    frame.At(3, 2) = 5000;
    EXPECT_THAT(Processed(frame, {}, 65535), EqualsFrame(Flat(6, 5, 4095)));
}

TEST(PreProcessFrame, FlatFrameStaysFlat) {
    EXPECT_THAT(Processed(Flat(9, 7, 300)), EqualsFrame(Flat(9, 7, 300)));
}

TEST(PreProcessFrame, DarkestPixelAboveZeroIsTheFloor) {
    Frame frame = Flat(9, 9, 0);
    frame.At(4, 4) = 77;  // the median takes it away, the floor stays
    EXPECT_THAT(Processed(frame), EqualsFrame(Flat(9, 9, 77)));
}

// At a gain of 1 the base is the second median as it is. Where the first one lies above it the detail brings
// that back; where it lies below, the detail is too large a number to be added.
TEST(PreProcessFrame, DetailIsAddedOnlyWhereItIsPositive) {
    PreProcessingParams params;
    params.PREPROCESSING_ENHANCESCALE = 1.0;
    const Frame frame = Noise(40, 30, kTwelveBits, 9);
    Frame first = frame;
    Median3x3ToBuffer(frame.Data(), first.Data(), 40, 30);
    Frame second = frame;
    Median3x3ToBuffer(first.Data(), second.Data(), 40, 30);
    uint16_t floor = 4095;
    for (const uint16_t pixel : frame.pixels) floor = pixel > 0 ? std::min(floor, pixel) : floor;
    Frame expected = frame;
    for (size_t i = 0; i < expected.pixels.size(); ++i)
        expected.pixels[i] = std::max({first.pixels[i], second.pixels[i], floor});
    EXPECT_NE(first, second);
    EXPECT_THAT(Processed(frame, params), EqualsFrame(expected));
}

TEST(PreProcessFrame, MapKeysHaveNoEffect) {
    const Frame frame = Noise(40, 30, kTwelveBits, 9);
    const Frame expected = Processed(frame);
    PreProcessingParams params;
    params.PREPROCESSING_AUMALPHA = 3.0;
    params.PREPROCESSING_AUMWEIGHT = 0.1;
    params.PREPROCESSING_AUMPOWER = 2.0;
    params.PREPROCESSING_AUMRANGE = -5.0;
    EXPECT_THAT(Processed(frame, params), EqualsFrame(expected));
}

TEST(PreProcessFrame, GainAndSigmaHaveOne) {
    const Frame frame = Noise(40, 30, kTwelveBits, 9);
    PreProcessingParams gain;
    gain.PREPROCESSING_ENHANCESCALE = 1.5;
    PreProcessingParams sigma;
    sigma.PREPROCESSING_GAUSSIANPOWER = 2.0;
    EXPECT_NE(Processed(frame, gain), Processed(frame));
    EXPECT_NE(Processed(frame, sigma), Processed(frame));
}

TEST(PreProcessFrame, SmallFramesAreSafe) {
    for (const auto& [width, height] : {std::pair{1, 1}, {1, 9}, {9, 1}, {2, 2}, {3, 3}})
        EXPECT_THAT(Processed(Flat(width, height, 9)), EqualsFrame(Flat(width, height, 9)));
}

}  // namespace
}  // namespace vastrelline
