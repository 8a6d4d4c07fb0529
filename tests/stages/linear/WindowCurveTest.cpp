// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

#include "operators/curves/LookupTable.h"
#include "stages/linear/WindowCurve.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

Frame Mapped(Frame frame, int32_t windowWidth, int32_t centre, int32_t outputRange) {
    const WindowCurve curve =
        BuildWindowCurve(frame.Data(), frame.width, frame.height, windowWidth, centre, outputRange);
    ApplyLookupTable(frame.Data(), frame.width, frame.height, curve.table);
    return frame;
}

struct WindowCase {
    const char* name;
    int32_t windowWidth;
    int32_t centre;
    std::vector<uint16_t> pixels;  // of {0, 4, 5, 6, 10, 14, 15, 16, 20}, at outputRange 100
};

class WindowCurveTest : public testing::TestWithParam<WindowCase> {};

TEST_P(WindowCurveTest, EveryLevelTakesItsPlaceOnTheRamp) {
    const Frame frame = FromRows({{0, 4, 5, 6, 10, 14, 15, 16, 20}});
    EXPECT_THAT(Mapped(frame, GetParam().windowWidth, GetParam().centre, 100),
                EqualsFrame(Frame(9, 1, GetParam().pixels)));
}

INSTANTIATE_TEST_SUITE_P(
    Windows, WindowCurveTest,
    testing::Values(
        // 5 to 15, a tenth per level.
        WindowCase{"EvenWidth", 10, 10, {0, 0, 0, 10, 50, 90, 100, 100, 100}},
        // Half of 9 is 4.5 and counts as 5.
        WindowCase{"HalfRoundsUp", 9, 10, {0, 0, 0, 10, 50, 90, 100, 100, 100}},
        // 6 to 14, an eighth per level.
        WindowCase{"NextEvenWidth", 8, 10, {0, 0, 0, 0, 50, 100, 100, 100, 100}},
        // 6 to 16.
        WindowCase{"CentreMovesTheRamp", 10, 11, {0, 0, 0, 0, 40, 80, 90, 100, 100}},
        // -5 to 5: 0 is in the middle.
        WindowCase{"RampFromBelowBlack", 10, 0, {50, 90, 100, 100, 100, 100, 100, 100, 100}},
        // -15 to -5
        WindowCase{"RampBelowEveryLevel", 10, -10, {100, 100, 100, 100, 100, 100, 100, 100, 100}},
        // 95 to 105
        WindowCase{"RampAboveEveryLevel", 10, 100, {0, 0, 0, 0, 0, 0, 0, 0, 0}},
        // 0 to 40: the frame ends half-way up.
        WindowCase{"RampThatEndsAboveTheFrame", 40, 20, {0, 10, 12, 15, 25, 35, 37, 40, 50}},
        // No ramp: at the centre 0 / 0 is no number.
        WindowCase{"NoWidth", 0, 10, {0, 0, 0, 0, 0, 100, 100, 100, 100}}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(WindowCurve, TableEndsWithTheFrameAndTheRampWhereItMay) {
    const Frame frame = FromRows({{3, 0, 6}});
    // 0 to 4, then 4 to 8.
    const WindowCurve within = BuildWindowCurve(frame.Data(), 3, 1, 4, 2, 100);
    EXPECT_EQ(within.highEdge, 4);
    EXPECT_EQ(within.table, (std::vector<uint16_t>{0, 25, 50, 75, 100, 100, 100}));
    const WindowCurve beyond = BuildWindowCurve(frame.Data(), 3, 1, 4, 6, 100);
    EXPECT_EQ(beyond.highEdge, 8);
    EXPECT_EQ(beyond.table, (std::vector<uint16_t>{0, 0, 0, 0, 0, 25, 50}));
}

TEST(WindowCurve, FrameWithoutPixelsGivesOneLevel) {
    EXPECT_EQ(BuildWindowCurve(nullptr, 0, 7, 4, 2, 100).table, std::vector<uint16_t>{0});
}

TEST(WindowCurve, HostileNumbersAreSafe) {
    for (const int32_t windowWidth : {INT_MIN, -1, 0, INT_MAX})
        for (const int32_t centre : {INT_MIN, -1, 0, INT_MAX})
            for (const int32_t outputRange : {INT_MIN, -1, 0, INT_MAX}) {
                const Frame frame =
                    Mapped(FromRows({{0, 1}, {4095, 65535}}), windowWidth, centre, outputRange);
                // Nothing is known of the pixels but that a range of 0 or less leaves no other level.
                if (outputRange <= 0) {
                    EXPECT_THAT(frame, EqualsFrame(Flat(2, 2, 0)));
                }
            }
}

}  // namespace
}  // namespace vastrelline
