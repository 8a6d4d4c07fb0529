// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

#include "DigestFrames.h"
#include "Generator.h"

namespace vastrelline::digest {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Le;

TEST(DigestFrames, RampRisesToTheRightAndDownwards) {
    // 4095 * x / 8 + 4095 * y / 4, each rounded down
    EXPECT_THAT(MakeFrame({FrameKind::Ramp, 4, 2}), ElementsAre(0, 511, 1023, 1535, 1023, 1534, 2046, 2558));
}

TEST(DigestFrames, StripesAreBlackAndWhite) {
    EXPECT_THAT(MakeFrame({FrameKind::Stripes, 3, 1}), ElementsAre(0, 4095, 0));
}

TEST(DigestFrames, LevelsComeOneAfterTheOther) {
    const std::vector<uint16_t> pixels = MakeFrame({FrameKind::Levels, 64, 65});
    for (size_t i = 0; i < pixels.size(); ++i) EXPECT_EQ(pixels[i], i % 4096) << i;
}

TEST(DigestFrames, SizesOfNothingHaveNoPixel) {
    EXPECT_THAT(MakeFrame({FrameKind::Noise, 0, 5}), IsEmpty());
    EXPECT_THAT(MakeFrame({FrameKind::Noise, 5, -1}), IsEmpty());
}

TEST(DigestFrames, CornersAreBlackAndTheOnlyBlack) {
    const std::vector<uint16_t> pixels = MakeFrame({FrameKind::Corners, 60, 36});
    size_t black = 0;
    for (int32_t y = 0; y < 36; ++y)
        for (int32_t x = 0; x < 60; ++x)
            if (pixels[static_cast<size_t>(y * 60 + x)] == 0) {
                ++black;
                EXPECT_TRUE(x + y < 6 || 59 - x + y < 6) << x << ' ' << y;
            }
    EXPECT_EQ(black, 2U * 21U);  // two triangles of 6 + 5 + ... + 1 pixels
}

TEST(DigestFrames, HaveTwelveBitsButForTheDeepOne) {
    for (const FrameKind kind :
         {FrameKind::Flat, FrameKind::Ramp, FrameKind::Noise, FrameKind::Radiograph, FrameKind::Corners,
          FrameKind::Weak, FrameKind::Steps, FrameKind::Specks, FrameKind::Stripes})
        EXPECT_THAT(MakeFrame({kind, 50, 40}), Each(Le(4095))) << static_cast<int>(kind);
    const std::vector<uint16_t> deep = MakeFrame({FrameKind::Deep, 50, 40});
    EXPECT_GT(*std::max_element(deep.begin(), deep.end()), 60000);
}

// A radiograph without many levels would leave most of a curve untried.
TEST(DigestFrames, RadiographHasMostLevelsOfItsRange) {
    const std::vector<uint16_t> pixels = MakeFrame({FrameKind::Radiograph, 96, 72});
    EXPECT_GT(std::set<uint16_t>(pixels.begin(), pixels.end()).size(), 1500U);
}

// The first numbers of the published generator for the seed 0.
TEST(Generator, GivesThePublishedNumbers) {
    Generator generator(uint64_t{0});
    EXPECT_EQ(generator.Next(), 0xe220a8397b1dcdafU);
    EXPECT_EQ(generator.Next(), 0x6e789e6aa1b965f4U);
    EXPECT_EQ(generator.Next(), 0x06c45d188009454fU);
}

}  // namespace
}  // namespace vastrelline::digest
