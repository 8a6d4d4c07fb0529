#include <gtest/gtest.h>

#include <cstdint>

#include "stages/clahe/DarkArea.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

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

}  // namespace
}  // namespace vastrelline
