// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "stages/adaptive_unsharp/ValueHistogram.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

TEST(ValueHistogram, CountsFromTheSmallestToTheLargestPixel) {
    const Frame frame = FromRows({{7, 4, 7}, {7, 4, 5}});
    int32_t smallest = 0;
    int32_t largest = 0;
    EXPECT_EQ(ValueHistogram(frame.Data(), 3, 2, smallest, largest), (std::vector<uint32_t>{2, 1, 0, 3}));
    EXPECT_EQ(smallest, 4);
    EXPECT_EQ(largest, 7);
}

TEST(ValueHistogram, EmptyFrameHasNoBins) {
    int32_t smallest = 0;
    int32_t largest = 0;
    EXPECT_TRUE(ValueHistogram(nullptr, 0, 3, smallest, largest).empty());
    EXPECT_EQ(smallest, 65535);
    EXPECT_EQ(largest, -32767);
    EXPECT_EQ(ClipHistogramTails(nullptr, 0.5, 0, 3), 0);
}

struct TailsCase {
    const char* name;
    double fraction;
    Frame frame;
    int32_t result;
    Frame clipped;
};

class ClipHistogramTailsTest : public testing::TestWithParam<TailsCase> {};

TEST_P(ClipHistogramTailsTest, HoldsTheOutermostLevels) {
    Frame frame = GetParam().frame;
    EXPECT_EQ(ClipHistogramTails(frame.Data(), GetParam().fraction, frame.width, frame.height),
              GetParam().result);
    EXPECT_THAT(frame, EqualsFrame(GetParam().clipped));
}

const Frame& OneOfEach() {
    static const Frame frame = FromRows({{10, 20, 30, 40, 50, 60, 70, 80, 90, 100}});
    return frame;
}

INSTANTIATE_TEST_SUITE_P(
    Frames, ClipHistogramTailsTest,
    testing::Values(
        // limit trunc(10 * 0.2 + 0.5) = 2: the third level from either end
        TailsCase{"TwoOfTen", 0.2, OneOfEach(), 1, FromRows({{30, 30, 30, 40, 50, 60, 70, 80, 80, 80}})},
        // limit trunc(1.5 + 0.5) = 2
        TailsCase{"LimitIsRounded", 0.15, OneOfEach(), 1,
                  FromRows({{30, 30, 30, 40, 50, 60, 70, 80, 80, 80}})},
        TailsCase{"LimitBelowHalfIsNone", 0.04, OneOfEach(), 1, OneOfEach()},
        // limit 5: the sixth from below is 60, from above 50
        TailsCase{"CrossedEndsClipNothing", 0.5, OneOfEach(), 0, OneOfEach()},
        TailsCase{"EqualEndsClipNothing", 0.0, Flat(3, 3, 7), 0, Flat(3, 3, 7)},
        TailsCase{"LimitNeverPassed", 1.0, OneOfEach(), 0, OneOfEach()},
        // limit 1: from above, 9 has one, and bin 0 with the three of 5 is not looked at
        TailsCase{"SmallestLevelIsNoUpperEnd", 0.25, FromRows({{5, 5, 5, 9}}), 0, FromRows({{5, 5, 5, 9}})}),
    [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vastrelline
