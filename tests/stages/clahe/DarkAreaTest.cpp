// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

#include "operators/separable/SeparableFilter.h"
#include "stages/clahe/DarkArea.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

Frame Corrected(Frame frame, const Frame& before, int32_t maxValue = kTwelveBits) {
    CorrectDarkArea(frame.Data(), before.Data(), frame.width, frame.height, maxValue);
    return frame;
}

TEST(DarkArea, FrameWithoutDarkPixelsStays) {
    EXPECT_THAT(Corrected(Flat(20, 20, 1500), Flat(20, 20, 7)), EqualsFrame(Flat(20, 20, 1500)));
}

TEST(DarkArea, DarkFrameBecomesTheEarlierOne) {
    const Frame before = Noise(20, 20, kTwelveBits, 1);
    EXPECT_THAT(Corrected(Flat(20, 20, 1499), before), EqualsFrame(before));
}

TEST(DarkArea, ResultIsClampedToMaxValue) {
    EXPECT_THAT(Corrected(Flat(20, 20, 100), Flat(20, 20, 5000)), EqualsFrame(Flat(20, 20, kTwelveBits)));
}

// Without levels up to 1500 the search starts at the top, which is the threshold where nothing is near it.
TEST(DarkArea, ShortRangeStartsTheSearchAtItsTop) {
    EXPECT_THAT(Corrected(Flat(20, 20, 900), Flat(20, 20, 7), 1000), EqualsFrame(Flat(20, 20, 7)));
    EXPECT_THAT(Corrected(Flat(20, 20, 1000), Flat(20, 20, 7), 1000), EqualsFrame(Flat(20, 20, 1000)));
}

TEST(DarkArea, RangesWithoutLevelsDoNotCrash) {
    for (const int32_t maxValue : {INT32_MIN, -1, 0})
        EXPECT_THAT(Corrected(Flat(3, 2, 9), Flat(3, 2, 7), maxValue), EqualsFrame(Flat(3, 2, 0)));
    EXPECT_THAT(Corrected(Flat(3, 2, 9), Flat(3, 2, 7), INT32_MAX), EqualsFrame(Flat(3, 2, 7)));
    CorrectDarkArea(nullptr, nullptr, 0, 0, kTwelveBits);
}

// Column x has level x and 60 pixels, but for ten columns of level 1600. A smoothed bin is the sum of ten,
// the bin and four above it the last, divided by 11: 54 as a rule, 49 with one bin empty. So the threshold is
// 714, five above the last empty bin. The window of the mask's Gaussian reaches 8 pixels:
// the mask is 3 at column 720 (255 times the two outer weights is 3.21) and 0 at 721 (0.97). It is 110
// (110.47) at the right edge, which sees the dark left one.
TEST(DarkArea, ValleyOfTheHistogramBoundsTheDark) {
    constexpr int32_t kWidth = 1521;
    Frame frame = Ramp(kWidth, 60, 0, 1, 0);
    for (int32_t y = 0; y < frame.height; ++y)
        for (int32_t x = 700; x < 710; ++x) frame.At(x, y) = 1600;
    const Frame corrected = Corrected(frame, Flat(kWidth, 60, 0));
    for (const int32_t y : {0, 30, 59}) {
        EXPECT_EQ(0, corrected.At(300, y));
        EXPECT_EQ(702, corrected.At(720, y));  // 720 * 124 / 127 = 702.99
        EXPECT_EQ(721, corrected.At(721, y));
        EXPECT_EQ(1000, corrected.At(1000, y));
        EXPECT_EQ(203, corrected.At(kWidth - 1, y));  // 1520 * 17 / 127 = 203.46
    }
}

TEST(DarkAreaVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(DarkAreaVariants, {"scalar", "baseline", "avx2"});
}

TEST(DarkAreaVariants, TheLastOneRuns) {
    Frame frame = Flat(9, 7, 100);
    const Frame before = Noise(9, 7, kTwelveBits, 5);
    ExpectLastFormRuns(DarkAreaVariants, 1, [&] {
        CorrectDarkArea(frame.Data(), before.Data(), frame.width, frame.height, kTwelveBits);
    });
}

TEST(DarkAreaVariants, EveryFormMarksWhatLiesBelow) {
    for (const DarkAreaVariant& variant : DarkAreaVariants())
        for (const int32_t count : {0, 1, 7, 16, 33, 100})
            for (const uint16_t threshold : {uint16_t{0}, uint16_t{1}, uint16_t{1500}, uint16_t{65535}}) {
                SCOPED_TRACE(testing::Message() << variant.name << ' ' << count << ' ' << threshold);
                const uint16_t below = threshold == 0 ? 0 : static_cast<uint16_t>(threshold - 1);
                Frame frame = Flat(count, 1, threshold);
                Frame mask(count, 1);
                EXPECT_FALSE(variant.run->mark(frame.Data(), frame.pixels.size(), threshold, mask.Data()));
                EXPECT_THAT(mask, EqualsFrame(Flat(count, 1, 0)));
                if (count == 0 || threshold == 0) continue;
                Frame expected(count, 1);
                for (int32_t x = count - 1; x >= 0; x -= 3) {
                    frame.At(x, 0) = below;
                    expected.At(x, 0) = 255;
                }
                EXPECT_TRUE(variant.run->mark(frame.Data(), frame.pixels.size(), threshold, mask.Data()));
                EXPECT_THAT(mask, EqualsFrame(expected));
            }
}

// Levels of a mask: all of one kind, the seams of areas, at random, and every level in turn.
std::vector<Frame> MakeMasks(int32_t count, std::mt19937& random) {
    std::vector<Frame> masks{Frame(count, 1), Flat(count, 1, 127), Flat(count, 1, 255), Flat(count, 1, 1)};
    Frame& seams = masks.emplace_back(count, 1);
    for (int32_t x = 0; x < count; ++x) seams.At(x, 0) = static_cast<uint16_t>(std::min(x / 40 * 64, 255));
    Frame& any = masks.emplace_back(count, 1);
    for (uint16_t& level : any.pixels) level = static_cast<uint16_t>(random() % 256);
    Frame& turns = masks.emplace_back(count, 1);
    for (int32_t x = 0; x < count; ++x) turns.At(x, 0) = static_cast<uint16_t>(x % 256);
    // One level among others that a stretch is known by.
    const std::pair<uint16_t, uint16_t> singles[] = {{255, 0}, {127, 126}, {0, 128}};
    for (const auto& [level, single] : singles) {
        Frame& one = masks.emplace_back(Flat(count, 1, level));
        if (count != 0) one.At(count / 2, 0) = single;
    }
    return masks;
}

// Whole and broken stretches; pixels up to and beyond the top, which only those take that are mixed.
TEST(DarkAreaVariants, EveryFormMixesAsTheReference) {
    std::mt19937 random(20240605);
    for (const int32_t count : {0, 1, 31, 32, 33, 64, 100, 300, 600})
        for (const Frame& mask : MakeMasks(count, random))
            for (const uint16_t level : {uint16_t{4095}, uint16_t{65535}})
                for (const int32_t maxValue : {INT32_MIN, -1, 0, 1000, 4095, 65535, 65536, INT32_MAX}) {
                    const Frame before = Noise(count, 1, level, 20240606);
                    const Frame noise = Noise(count, 1, level, 20240607);
                    Frame expected = noise;
                    const auto pixels = static_cast<size_t>(count);
                    DarkAreaVariants().front().run->mix(expected.Data(), before.Data(), mask.Data(), pixels,
                                                        maxValue);
                    for (const DarkAreaVariant& variant : DarkAreaVariants()) {
                        Frame frame = noise;
                        variant.run->mix(frame.Data(), before.Data(), mask.Data(), pixels, maxValue);
                        ASSERT_THAT(frame, EqualsFrame(expected)) << variant.name << ' ' << maxValue;
                    }
                }
}

// Dark places in a bright frame: one pixel in each corner and beside the blocks that the mask is made in,
// areas with borders there and elsewhere, scattered pixels, and all but one.
std::vector<Frame> MakeDarkPlaces(int32_t width, int32_t height, std::mt19937& random) {
    constexpr uint16_t kDark = 100;
    constexpr uint16_t kBright = 3000;
    std::vector<Frame> frames;
    for (const int32_t x : {0, 63, 64, width - 1})
        for (const int32_t y : {0, 63, 64, height - 1}) {
            Frame& single = frames.emplace_back(Flat(width, height, kBright));
            single.At(std::min(x, width - 1), std::min(y, height - 1)) = kDark;
        }
    for (const int32_t side : {8, 40, 64, 100}) {
        Frame& area = frames.emplace_back(Flat(width, height, kBright));
        const auto left = static_cast<int32_t>(random() % static_cast<uint32_t>(width));
        for (int32_t y = height / 3; y < std::min(height / 3 + side, height); ++y)
            for (int32_t x = left; x < std::min(left + side, width); ++x) area.At(x, y) = kDark;
    }
    for (const uint32_t oneOf : {2U, 5000U}) {
        Frame& scattered = frames.emplace_back(width, height);
        for (uint16_t& pixel : scattered.pixels) pixel = random() % oneOf == 0 ? kDark : kBright;
    }
    Frame& nearlyAll = frames.emplace_back(Flat(width, height, kDark));
    nearlyAll.At(width / 2, height / 2) = kBright;
    return frames;
}

// Whatever blocks it is made in, the mask is that of the whole frame, marked and smoothed.
TEST(DarkArea, MaskIsThatOfTheWholeFrame) {
    constexpr uint16_t kThreshold = 1500;  // where no pixel is near it
    std::mt19937 random(20240608);
    const DarkAreaLoops& reference = *DarkAreaVariants().front().run;
    const std::pair<int32_t, int32_t> sizes[] = {{1, 1},   {5, 3},    {8, 17},   {17, 8},    {64, 64},
                                                 {65, 63}, {80, 144}, {200, 90}, {2049, 10}, {4200, 3}};
    for (const auto& [width, height] : sizes)
        for (const Frame& frame : MakeDarkPlaces(width, height, random)) {
            const Frame before = Noise(width, height, kTwelveBits, 20240609);
            Frame mask(width, height);
            reference.mark(frame.Data(), frame.pixels.size(), kThreshold, mask.Data());
            GaussFilterWrap(mask.Data(), width, height, 255, 3.0);
            Frame expected = frame;
            reference.mix(expected.Data(), before.Data(), mask.Data(), mask.pixels.size(), kTwelveBits);
            ASSERT_THAT(Corrected(frame, before), EqualsFrame(expected)) << width << " x " << height;
        }
}

}  // namespace
}  // namespace vastrelline
