#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "operators/curves/LookupTable.h"
#include "operators/histogram/Histogram.h"
#include "operators/histogram/PixelRange.h"
#include "stages/stretch/PlannedCurves.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

// The plan and the frame itself agree on its counts and its range.
void ExpectSameCounts(const PlannedCurves& plan, const Frame& frame) {
    EXPECT_EQ(plan.MinLevel(), MinPixel(frame.Data(), frame.width, frame.height));
    EXPECT_EQ(plan.MaxLevel(), MaxPixel(frame.Data(), frame.width, frame.height));
    for (const int32_t maxValue : {4095, 65535}) {
        EXPECT_EQ(plan.Histogram(maxValue),
                  BuildHistogram(frame.Data(), frame.width, frame.height, maxValue));
        EXPECT_EQ(plan.UnclampedHistogram(maxValue),
                  BuildUnclampedHistogram(frame.Data(), frame.width, frame.height, maxValue));
    }
}

// Not monotonous, many levels to one, and beyond 12 bits.
std::vector<uint16_t> MakeTable(size_t levels, uint32_t factor) {
    std::vector<uint16_t> table(levels);
    for (size_t level = 0; level < levels; ++level) table[level] = static_cast<uint16_t>(level / 3 * factor);
    return table;
}

TEST(PlannedCurves, CurvesPassOverThePixelsOnce) {
    for (const bool isAppliedBetween : {false, true})
        for (const Frame& original : {Noise(37, 11, 65535, 1), Flat(2, 2, 65535), Frame(0, 5)}) {
            SCOPED_TRACE(testing::Message()
                         << original.width << " x " << original.height << ' ' << isAppliedBetween);
            Frame planned = original;
            Frame expected = original;
            PlannedCurves plan({planned.Data(), planned.width, planned.height});
            ExpectSameCounts(plan, expected);
            // The tables end below the highest levels.
            for (const std::vector<uint16_t>& table : {MakeTable(4000, 31), MakeTable(20000, 7)}) {
                plan.Add(table);
                ApplyLookupTable(expected.Data(), expected.width, expected.height, table);
                ExpectSameCounts(plan, expected);
                if (isAppliedBetween) {
                    plan.Apply();
                    EXPECT_THAT(planned, EqualsFrame(expected));
                }
            }
            plan.Apply();
            EXPECT_THAT(planned, EqualsFrame(expected));
            plan.Apply();
            EXPECT_THAT(planned, EqualsFrame(expected));
        }
}

TEST(PlannedCurves, PixelsStayUntilTheyAreApplied) {
    Frame frame = FromRows({{1, 2, 3}});
    PlannedCurves plan({frame.Data(), 3, 1});
    plan.Add(std::vector<uint16_t>{9, 8, 7, 6});
    plan.Add({});
    EXPECT_THAT(frame, EqualsFrame(FromRows({{1, 2, 3}})));
    plan.Apply();
    EXPECT_THAT(frame, EqualsFrame(FromRows({{8, 7, 6}})));
}

}  // namespace
}  // namespace vastrelline
