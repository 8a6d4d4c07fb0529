#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "sensor/SaturationCap.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

struct CapCase {
    const char* name;
    int32_t saturationValue;
    Frame frame;
    Frame capped;
};

class SaturationCapTest : public testing::TestWithParam<CapCase> {};

TEST_P(SaturationCapTest, SaturatedPixelsTakeTheBrightestUnsaturatedValue) {
    Frame frame = GetParam().frame;
    CapSaturation(frame.Data(), frame.width, frame.height, GetParam().saturationValue);
    EXPECT_THAT(frame, EqualsFrame(GetParam().capped));
}

INSTANTIATE_TEST_SUITE_P(
    Edges, SaturationCapTest,
    testing::Values(
        CapCase{"AtAndAboveTheValueIsSaturated", 4095, FromRows({{4094, 4095}, {4096, 65535}}),
                Flat(2, 2, 4094)},
        CapCase{"CapIsNotTheValueItself", 4095, FromRows({{100, 4095, 3000}}), FromRows({{100, 3000, 3000}})},
        CapCase{"NothingSaturated", 4095, FromRows({{1, 2}, {3, 4094}}), FromRows({{1, 2}, {3, 4094}})},
        CapCase{"AllSaturatedBecomesBlack", 4095, Flat(3, 2, 4095), Flat(3, 2, 0)},
        CapCase{"ValueZeroBlackensTheFrame", 0, FromRows({{0, 1, 4095}}), Flat(3, 1, 0)},
        CapCase{"NegativeValueBlackensTheFrame", -1, FromRows({{0, 1, 4095}}), Flat(3, 1, 0)},
        CapCase{"ValueOneLeavesOnlyBlackUnsaturated", 1, FromRows({{0, 1, 4095}}), Flat(3, 1, 0)},
        CapCase{"ValueAboveAllPixelsCapsNothing", 65536, FromRows({{0, 65535}}), FromRows({{0, 65535}})},
        CapCase{"LargestValueCapsNothing", std::numeric_limits<int32_t>::max(), FromRows({{0, 65535}}),
                FromRows({{0, 65535}})},
        CapCase{"LowestValueBlackensTheFrame", std::numeric_limits<int32_t>::min(), FromRows({{0, 65535}}),
                Flat(2, 1, 0)},
        CapCase{"OnePixel", 4095, Flat(1, 1, 9), Flat(1, 1, 9)},
        CapCase{"OneColumn", 10, FromRows({{3}, {12}, {7}}), FromRows({{3}, {7}, {7}})},
        CapCase{"EmptyFrame", 4095, Frame(0, 0), Frame(0, 0)}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(SaturationCap, DoesTheSameToAMirroredFrame) {
    Frame frame = Noise(17, 5, 4095, 2);
    Frame mirrored = MirrorLeftRight(frame);
    CapSaturation(frame.Data(), 17, 5, 2000);
    CapSaturation(mirrored.Data(), 17, 5, 2000);
    EXPECT_THAT(mirrored, EqualsFrame(MirrorLeftRight(frame)));
}

}  // namespace
}  // namespace vastrelline
