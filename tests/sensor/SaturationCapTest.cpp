// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "sensor/SaturationCap.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/VariantForms.h"

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

TEST(SaturationCapVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(SaturationCapVariants, {"scalar", "baseline", "avx2", "avx512"});
}

TEST(SaturationCapVariants, TheLastOneRuns) {
    Frame frame = Noise(9, 7, 4095, 5);
    ExpectLastFormRuns(SaturationCapVariants, 1, [&] { CapSaturation(frame.Data(), 9, 7, 4000); });
}

// Each pixel in turn is the brightest unsaturated one, among others that are saturated or darker.
TEST(SaturationCap, EveryVariantSeesTheBrightestAtEveryPlace) {
    for (const SaturationCapVariant& variant : SaturationCapVariants())
        for (const size_t count : {1U, 2U, 7U, 15U, 16U, 17U, 31U, 33U, 63U, 64U, 65U, 129U}) {
            for (size_t place = 0; place < count; ++place) {
                std::vector<uint16_t> pixels(count, uint16_t{65535});
                std::vector<uint16_t> capped(count, uint16_t{40001});
                for (size_t i = 0; i < count; i += 3) pixels[i] = capped[i] = 20000;
                pixels[place] = capped[place] = 40001;
                variant.run(pixels.data(), count, 40002);
                ASSERT_EQ(pixels, capped) << variant.name << ' ' << place << " of " << count;
            }
        }
}

// Values around both ends of the pixels, around the middle, where a sign would begin, and far out.
TEST(SaturationCap, EveryVariantGivesTheReferencePixelsForEveryValue) {
    constexpr int32_t kMin = std::numeric_limits<int32_t>::min();
    constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
    for (const int32_t value : {kMin,  -65536, -65535, -32768, -1,    0,     1,     2,     4095,   32766,
                                32767, 32768,  32769,  65534,  65535, 65536, 65537, 98304, 131072, kMax})
        for (const int32_t count : {0, 1, 5, 64, 67, 200})
            for (const uint16_t top : {uint16_t{1}, uint16_t{4095}, uint16_t{65535}}) {
                const Frame noise = Noise(count, 1, top, 20240601);
                Frame expected = noise;
                const auto pixels = static_cast<size_t>(count);
                SaturationCapVariants().front().run(expected.Data(), pixels, value);
                for (const SaturationCapVariant& variant : SaturationCapVariants()) {
                    Frame frame = noise;
                    variant.run(frame.Data(), pixels, value);
                    ASSERT_EQ(frame, expected) << variant.name << ' ' << count << ' ' << value << ' ' << top;
                }
            }
}

}  // namespace
}  // namespace vastrelline
