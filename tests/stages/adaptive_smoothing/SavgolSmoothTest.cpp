// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "stages/adaptive_smoothing/SavgolSmooth.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;
constexpr int32_t kSixteenBits = 65535;

Frame Smoothed(Frame frame, int32_t mask, int32_t order, int32_t maxValue = kSixteenBits) {
    SavgolSmooth(frame.Data(), frame.width, frame.height, maxValue, mask, order);
    return frame;
}

// The largest difference between two frames of one size.
int32_t LargestDifference(const Frame& a, const Frame& b) {
    int32_t largest = 0;
    for (size_t i = 0; i < a.pixels.size(); ++i)
        largest = std::max(largest, std::abs(int32_t{a.pixels[i]} - int32_t{b.pixels[i]}));
    return largest;
}

// The taper of three taps is exp(-4), 1, exp(-4); divided by its sum: 0.0176684, 0.9646632, 0.0176684.
TEST(SavgolSmooth, DegreeZeroLeavesTheTaper) {
    EXPECT_THAT(Smoothed(FromRows({{0, 0, 10000, 0, 0}}), 3, 0),
                EqualsFrame(FromRows({{0, 176, 9646, 176, 0}})));
}

TEST(SavgolSmooth, DegreeThatTheMaskCannotCarryLeavesTheTaper) {
    for (const int32_t order : {3, 4, INT_MAX, -1, INT_MIN}) {
        EXPECT_THAT(Smoothed(FromRows({{0, 0, 10000, 0, 0}}), 3, order),
                    EqualsFrame(FromRows({{0, 176, 9646, 176, 0}})))
            << order;
    }
}

// (-3, 12, 17, 12, -3) / 35 under exp(-4), exp(-1), 1, exp(-1), exp(-4), divided by the sum: 0.6609845,
// 0.1716442 and -0.0021364 from the middle outwards. On a ground of 1000 the outer taps take 21.4 off.
TEST(SavgolSmooth, TapsBelowZeroAreKept) {
    EXPECT_THAT(Smoothed(FromRows({{1000, 1000, 11000, 1000, 1000}}), 5, 2),
                EqualsFrame(FromRows({{978, 2716, 7609, 2716, 978}})));
}

TEST(SavgolSmooth, ResultBelowZeroIsStoredAsZero) {
    EXPECT_THAT(Smoothed(FromRows({{0, 0, 0, 10000, 0, 0, 0}}), 5, 2),
                EqualsFrame(FromRows({{0, 0, 1716, 6609, 1716, 0, 0}})));
}

TEST(SavgolSmooth, ResultAboveMaxValueIsStoredAsMaxValue) {
    EXPECT_THAT(Smoothed(FromRows({{0, 0, 0, 10000, 0, 0, 0}}), 5, 2, kTwelveBits),
                EqualsFrame(FromRows({{0, 0, 1716, 4095, 1716, 0, 0}})));
}

TEST(SavgolSmooth, EdgesWrapAround) {
    EXPECT_THAT(Smoothed(FromRows({{10000, 0, 0, 0, 0}}), 3, 0),
                EqualsFrame(FromRows({{9646, 176, 0, 0, 176}})));
    EXPECT_THAT(Smoothed(FromRows({{0}, {0}, {0}, {0}, {10000}}), 3, 0),
                EqualsFrame(FromRows({{176}, {0}, {0}, {176}, {9646}})));
}

TEST(SavgolSmooth, ColumnsFollowRows) {
    // 0.0176684 squared of 60000 is 18.7, 0.0176684 * 0.9646632 of it 1022.6, 0.9646632 squared 55834.5.
    EXPECT_THAT(Smoothed(Impulse(5, 5, 2, 2, 60000), 3, 0), EqualsFrame(FromRows({{0, 0, 0, 0, 0},
                                                                                  {0, 18, 1022, 18, 0},
                                                                                  {0, 1022, 55834, 1022, 0},
                                                                                  {0, 18, 1022, 18, 0},
                                                                                  {0, 0, 0, 0, 0}})));
}

// Four taps reach two pixels to the left of a result and one to the right: exp(-64/9), exp(-16/9), 1,
// exp(-16/9), divided by the sum: 0.0006095, 0.1262384, 0.7469138, 0.1262384.
TEST(SavgolSmooth, EvenMaskHasOneTapLessOnTheRight) {
    EXPECT_THAT(Smoothed(FromRows({{0, 0, 0, 60000, 0, 0, 0}}), 4, 0),
                EqualsFrame(FromRows({{0, 0, 7574, 44814, 7574, 36, 0}})));
    // (-3, 12, 17, 12) / 35, the first four of five, under the same taper: -0.0001163, 0.0963319, 0.8074524,
    // 0.0963319.
    EXPECT_THAT(Smoothed(FromRows({{0, 0, 0, 60000, 0, 0, 0}}), 4, 2),
                EqualsFrame(FromRows({{0, 0, 5779, 48447, 5779, 0, 0}})));
}

TEST(SavgolSmooth, FlatFrameStaysFlatUpToTheTruncation) {
    for (const int32_t mask : {2, 3, 14, 15, 31}) {
        for (const int32_t level : {0, 1, 1000, 4095}) {
            const Frame result = Smoothed(Flat(33, 32, static_cast<uint16_t>(level)), mask, 4, kTwelveBits);
            const auto [least, most] = std::minmax_element(result.pixels.begin(), result.pixels.end());
            EXPECT_EQ(*least, *most) << mask << ' ' << level;
            EXPECT_GE(*least, std::max(level - 1, 0)) << mask << ' ' << level;
            EXPECT_LE(*most, level) << mask << ' ' << level;
        }
    }
}

// The sums run from the other end, so a result may fall on the other side of an integer.
TEST(SavgolSmooth, MirroredFrameGivesTheMirroredResult) {
    const Frame frame = Noise(37, 29, kTwelveBits, 3);
    const Frame result = Smoothed(frame, 15, 4, kTwelveBits);
    EXPECT_LE(
        LargestDifference(Smoothed(MirrorLeftRight(frame), 15, 4, kTwelveBits), MirrorLeftRight(result)), 1);
    EXPECT_LE(
        LargestDifference(Smoothed(MirrorTopBottom(frame), 15, 4, kTwelveBits), MirrorTopBottom(result)), 1);
    EXPECT_GT(LargestDifference(frame, result), 100);
}

TEST(SavgolSmooth, FramesNarrowerThanTheMaskWrapMoreThanOnce) {
    for (const auto& [width, height] : {std::pair{1, 1}, {1, 7}, {7, 1}, {2, 2}, {3, 20}, {0, 3}, {3, 0}}) {
        const Frame flat = Flat(width, height, 2000);
        EXPECT_LE(LargestDifference(Smoothed(flat, 15, 4), flat), 1) << width << " x " << height;
    }
    // Taps take two pixels in turn: 0.6609845 - 2 * 0.0021364 = 0.6567116 fall to the pixel itself, 0.3432884
    // to the other.
    EXPECT_THAT(Smoothed(FromRows({{1000, 3000}}), 5, 2), EqualsFrame(FromRows({{1686, 2313}})));
}

struct IdleCase {
    const char* name;
    int32_t mask;
    int32_t order;
};

class IdleSavgolSmoothTest : public testing::TestWithParam<IdleCase> {};

TEST_P(IdleSavgolSmoothTest, LeavesTheFrameAsItIs) {
    const Frame frame = Noise(13, 9, kTwelveBits, 11);
    // Not even the limit is applied.
    EXPECT_THAT(Smoothed(frame, GetParam().mask, GetParam().order, 100), EqualsFrame(frame));
}

INSTANTIATE_TEST_SUITE_P(
    HostileKeys, IdleSavgolSmoothTest,
    testing::Values(IdleCase{"OneTap", 1, 0}, IdleCase{"NoTap", 0, 4}, IdleCase{"NegativeMask", -15, 4},
                    IdleCase{"SmallestMask", INT_MIN, 4}, IdleCase{"LargestMask", INT_MAX, 4},
                    IdleCase{"MaskBeyondMemory", INT_MAX - 1, INT_MAX},
                    // 23162 more columns and rows: 23175 * 23171 is just above 2^29.
                    IdleCase{"MaskJustTooWide", 23163, 0}, IdleCase{"PowersBeyondDoubles", 2001, 2000}),
    [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vastrelline
