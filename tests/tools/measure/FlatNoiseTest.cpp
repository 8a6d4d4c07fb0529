// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>

#include "measure/FlatNoise.h"
#include "phantom/WedgePhantom.h"

namespace vastrelline {
namespace {

constexpr int32_t kNeverClipped = 65536;

// A chequerboard of 10 and 12 on 4 x 4 pixels has no slope: the sum of squares around 11 is 16, and 16 pixels
// have 13 degrees of freedom beside a plane.
TEST(FlatNoise, OfAChequerboardIsWorkedOutByHand) {
    const Frame frame{4, 4, {10, 12, 10, 12, 12, 10, 12, 10, 10, 12, 10, 12, 12, 10, 12, 10}};
    const FlatNoise noise = MeasureFlatNoise(frame, {0, 0, 4, 4}, kNeverClipped);
    EXPECT_DOUBLE_EQ(noise.mean, 11.0);
    EXPECT_NEAR(noise.deviation, std::sqrt(16.0 / 13.0), 1e-12);
    EXPECT_EQ(noise.clippedShare, 0.0);
}

TEST(FlatNoise, ShadingIsNoNoise) {
    Frame frame{64, 64, {}};
    for (int32_t y = 0; y < 64; ++y)
        for (int32_t x = 0; x < 64; ++x) frame.pixels.push_back(static_cast<uint16_t>(1000 + 3 * x + 5 * y));
    EXPECT_NEAR(MeasureFlatNoise(frame, {0, 0, 64, 64}, kNeverClipped).deviation, 0.0, 1e-4);
}

TEST(FlatNoise, CountsWhatIsClipped) {
    const Frame frame{4, 4, {0, 255, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9}};
    EXPECT_EQ(MeasureFlatNoise(frame, {0, 0, 4, 4}, 255).clippedShare, 2.0 / 16.0);
    EXPECT_THROW(MeasureFlatNoise(frame, {0, 0, 3, 4}, 255), CannotMeasure);
}

// The median of the variances of n blocks, each of 253 degrees of freedom, errs by 1.2533 * sqrt(2 / 253) /
// sqrt(n) of the variance, half of that of the deviation: of 24 x 16 blocks 0.3 %. Five of these are allowed.
TEST(FlatNoise, FindsTheNoiseOfThePhantom) {
    for (const uint64_t seed : {1U, 2U, 3U})
        for (const double sigma : {0.5, 2.0, 30.0}) {
            const Frame frame = MakeWedgePhantom({{384, 256}, {1000.0, 3000.0, 4095, seed}, {sigma}});
            const double expected = std::sqrt(sigma * sigma + 1.0 / 12.0);
            EXPECT_NEAR(MeasureFlatNoise(frame, {0, 0, 384, 256}, kNeverClipped).deviation, expected,
                        0.015 * expected)
                << seed << ' ' << sigma;
        }
}

// A scratch through a twelfth of the blocks: the plain deviation would be more than 10 times as large.
TEST(FlatNoise, AScratchDoesNotCount) {
    Frame frame = MakeWedgePhantom({{384, 256}, {1000.0, 3000.0, 4095, 1}, {5.0}});
    for (int32_t y = 0; y < 256; ++y)
        for (int32_t x = 100; x < 105; ++x) frame.pixels[static_cast<size_t>(384 * y + x)] = 4000;
    // A shift of the median by one 24th of the blocks is 0.1 deviations of a block's variance: 0.5 %.
    EXPECT_NEAR(MeasureFlatNoise(frame, {0, 0, 384, 256}, kNeverClipped).deviation, 5.0, 0.12);
}

}  // namespace
}  // namespace vastrelline
