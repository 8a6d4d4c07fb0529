// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>

#include "operators/repeat/RepeatedPasses.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

// A pass that counts up from 0 and, past `tail + period - 1`, goes back to `tail`. Gives the count after
// `count` passes and how many were run.
struct Counted {
    int32_t value;
    int64_t passes;
};

Counted CountUp(int32_t count, int32_t tail, int32_t period) {
    Frame frame = Flat(1, 1, 0);
    int64_t passes = 0;
    RepeatPasses({frame.Data(), 1, 1}, count, [&] {
        ++passes;
        const int32_t next = frame.At(0, 0) + 1;
        frame.At(0, 0) = static_cast<uint16_t>(next == tail + period ? tail : next);
    });
    return {frame.At(0, 0), passes};
}

TEST(RepeatedPasses, EveryCountGivesWhatSoManyPassesGive) {
    for (const int32_t tail : {0, 1, 7, 8, 9, 30}) {
        for (const int32_t period : {1, 2, 3, 16, 17}) {
            for (int32_t count = -1; count <= 140; ++count) {
                const int32_t expected =
                    count < tail ? (count < 0 ? 0 : count) : tail + (count - tail) % period;
                ASSERT_EQ(expected, CountUp(count, tail, period).value)
                    << count << " passes, tail " << tail << ", period " << period;
            }
        }
    }
}

// 2147483647 is 1 above a multiple of 2, and of 3.
TEST(RepeatedPasses, LargestCountEndsSoonAtTheRightPlaceOfTheCircle) {
    const Counted still = CountUp(INT_MAX, 5, 1);
    EXPECT_EQ(5, still.value);
    EXPECT_LE(still.passes, 20);
    const Counted alternating = CountUp(INT_MAX, 0, 2);
    EXPECT_EQ(1, alternating.value);
    EXPECT_LE(alternating.passes, 20);
    EXPECT_EQ(1, CountUp(INT_MAX, 0, 3).value);
}

TEST(RepeatedPasses, PassesThatChangeTheFrameAreAllRun) {
    for (const int32_t count : {0, 1, 3, 8, 9, 20}) EXPECT_EQ(count, CountUp(count, 100, 1).passes);
}

TEST(RepeatedPasses, EndsWithThePassThatChangesNothing) {
    EXPECT_EQ(1, CountUp(5, 0, 1).passes);
    EXPECT_EQ(4, CountUp(INT_MAX, 3, 1).passes);
}

// Few rows of a high frame are looked at before the whole of it is.
TEST(RepeatedPasses, ChangeAnywhereInAHighFrameIsSeen) {
    constexpr int32_t kHeight = 100;
    for (int32_t y = 0; y < kHeight; ++y) {
        Frame frame = Flat(3, kHeight, 0);
        int32_t passes = 0;
        RepeatPasses({frame.Data(), 3, kHeight}, INT_MAX, [&] {
            ++passes;
            if (frame.At(1, y) < 6) ++frame.At(1, y);
        });
        EXPECT_EQ(frame.At(1, y), 6) << y;
        EXPECT_LE(passes, 8) << y;  // the six, and two that change nothing
    }
}

TEST(RepeatedPasses, EmptyFrameNeedsNoPass) {
    Frame frame(0, 4);
    int32_t passes = 0;
    RepeatPasses({frame.Data(), 0, 4}, INT_MAX, [&] { ++passes; });
    EXPECT_EQ(0, passes);
}

}  // namespace
}  // namespace vastrelline
