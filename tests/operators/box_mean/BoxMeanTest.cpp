// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <numeric>
#include <vector>

#include "operators/box_mean/BoxMean.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kLargest = std::numeric_limits<int32_t>::max();

Frame MeanOf(const Frame& frame, int32_t radius) {
    Frame means(frame.width, frame.height);
    BoxMean(frame.Data(), means.Data(), frame.width, frame.height, radius);
    return means;
}

// The mean of one line by the plain sum of each window.
std::vector<uint16_t> MeanOfLine(const std::vector<uint16_t>& line, int32_t radius) {
    const auto count = static_cast<int32_t>(line.size());
    std::vector<uint16_t> means;
    for (int32_t i = 0; i < count; ++i) {
        int64_t sum = 0;
        for (int32_t k = i - radius; k <= i + radius; ++k)
            sum += line.at(static_cast<size_t>(ClampIndex(k, count)));
        means.push_back(static_cast<uint16_t>(sum / (2 * radius + 1)));
    }
    return means;
}

TEST(BoxMean, ClampIndexKeepsWithinTheElements) {
    EXPECT_EQ(ClampIndex(-1, 5), 0);
    EXPECT_EQ(ClampIndex(std::numeric_limits<int64_t>::min(), 5), 0);
    EXPECT_EQ(ClampIndex(0, 5), 0);
    EXPECT_EQ(ClampIndex(4, 5), 4);
    EXPECT_EQ(ClampIndex(5, 5), 4);
    EXPECT_EQ(ClampIndex(int64_t{kLargest} * 4, 1), 0);
}

struct BoxMeanCase {
    const char* name;
    int32_t radius;
    Frame frame;
    Frame means;
};

class BoxMeanTest : public testing::TestWithParam<BoxMeanCase> {};

TEST_P(BoxMeanTest, GivesTheMeans) {
    const auto& [name, radius, frame, means] = GetParam();
    EXPECT_THAT(MeanOf(frame, radius), EqualsFrame(means));
    Frame inPlace = frame;
    BoxMeanInPlace(inPlace.Data(), frame.width, frame.height, radius);
    EXPECT_THAT(inPlace, EqualsFrame(means));
}

INSTANTIATE_TEST_SUITE_P(
    Frames, BoxMeanTest,
    testing::Values(
        BoxMeanCase{"RadiusZeroGivesTheSource", 0, FromRows({{1, 7}, {65535, 0}}),
                    FromRows({{1, 7}, {65535, 0}})},
        BoxMeanCase{"RadiusBelowZeroGivesTheSource", std::numeric_limits<int32_t>::min(), FromRows({{1, 7}}),
                    FromRows({{1, 7}})},
        // (0+0+10)/3, (0+10+20)/3, (10+20+60)/3, (20+60+60)/3
        BoxMeanCase{"RowRepeatsItsEnds", 1, FromRows({{0, 10, 20, 60}}), FromRows({{3, 10, 30, 46}})},
        BoxMeanCase{"ColumnRepeatsItsEnds", 1, FromRows({{0}, {10}, {20}, {60}}),
                    FromRows({{3}, {10}, {30}, {46}})},
        // Rows: 5/3 is 1, 2/3 is 0; columns: 3/3, 2/3, 1/3. In one go the middle would be 12/9, which is 1.
        BoxMeanCase{"RowsRoundDownBeforeColumns", 1, FromRows({{0, 5, 0}, {0, 5, 0}, {0, 2, 0}}),
                    FromRows({{1, 1, 1}, {0, 0, 0}, {0, 0, 0}})},
        // Rows: 2, 5, 8 and 0, 0, 0 and 8, 8, 8; columns: (2+2+0)/3, (2+0+8)/3, (0+8+8)/3, and so on.
        BoxMeanCase{"SquareOfThree", 1, FromRows({{0, 8, 8}, {0, 0, 0}, {8, 8, 8}}),
                    FromRows({{1, 3, 5}, {3, 4, 5}, {5, 5, 5}})},
        // Five wide on two: (3*0+2*9)/5, (2*0+3*9)/5
        BoxMeanCase{"WindowWiderThanTheFrame", 2, FromRows({{0, 9}}), FromRows({{3, 5}})},
        // Of the 2 * r + 1 pixels r + 1 are the first and r the last one at the left, and the reverse.
        BoxMeanCase{"LargestRadius", kLargest, FromRows({{0, 100}}), FromRows({{49, 50}})},
        BoxMeanCase{"OnePixel", 7, Flat(1, 1, 65535), Flat(1, 1, 65535)},
        BoxMeanCase{"FlatStaysFlat", 20, Flat(37, 5, 65535), Flat(37, 5, 65535)},
        BoxMeanCase{"FlatStaysFlatAtTheLargestRadius", kLargest, Flat(37, 5, 65535), Flat(37, 5, 65535)},
        BoxMeanCase{"NoPixels", 3, Frame(0, 4), Frame(0, 4)}),
    [](const auto& test) { return test.param.name; });

TEST(BoxMean, NullDoesNothing) {
    uint16_t pixel = 7;
    BoxMean(&pixel, nullptr, 1, 1, 1);
    BoxMean(nullptr, &pixel, 1, 1, 1);
    BoxMeanInPlace(nullptr, 1, 1, 1);
    EXPECT_EQ(pixel, 7);
}

TEST(BoxMean, LinesEqualThePlainSumOfEachWindow) {
    for (const int32_t radius : {1, 2, 7, 8, 30, 31, 32, 33, 70, 16383, 16384}) {
        const Frame line = Noise(65, 1, 65535, 20240507);
        const std::vector<uint16_t> means = MeanOfLine(line.pixels, radius);
        EXPECT_EQ(MeanOf(line, radius).pixels, means) << radius;
        EXPECT_EQ(MeanOf(Frame(1, 65, line.pixels), radius).pixels, means) << radius;
    }
}

TEST(BoxMean, MirroredFrameGivesTheMirroredMeans) {
    const Frame frame = Noise(45, 23, 4095, 20240508);
    for (const int32_t radius : {1, 5, 40}) {
        EXPECT_THAT(MeanOf(MirrorLeftRight(frame), radius),
                    EqualsFrame(MirrorLeftRight(MeanOf(frame, radius))));
        EXPECT_THAT(MeanOf(MirrorTopBottom(frame), radius),
                    EqualsFrame(MirrorTopBottom(MeanOf(frame, radius))));
    }
}

}  // namespace
}  // namespace vastrelline
