// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "operators/histogram/PixelRange.h"
#include "support/Frames.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

struct RangeCase {
    const char* name;
    Frame frame;
    int32_t smallest;
    int32_t largest;
};

class PixelRangeTest : public testing::TestWithParam<RangeCase> {};

TEST_P(PixelRangeTest, FindsTheSmallestAndTheLargestPixel) {
    const Frame& frame = GetParam().frame;
    EXPECT_EQ(MinPixel(frame.Data(), frame.width, frame.height), GetParam().smallest);
    EXPECT_EQ(MaxPixel(frame.Data(), frame.width, frame.height), GetParam().largest);
}

INSTANTIATE_TEST_SUITE_P(
    Edges, PixelRangeTest,
    testing::Values(RangeCase{"EmptyFrameGivesTheStartValues", Frame(0, 0), 65536, 0},
                    RangeCase{"NoRows", Frame(5, 0), 65536, 0}, RangeCase{"NoColumns", Frame(0, 5), 65536, 0},
                    RangeCase{"OnePixel", Flat(1, 1, 7), 7, 7}, RangeCase{"AllZero", Flat(3, 2, 0), 0, 0},
                    RangeCase{"AllTop", Flat(3, 2, 65535), 65535, 65535},
                    RangeCase{"OneRow", FromRows({{5, 3, 9, 4}}), 3, 9},
                    RangeCase{"OneColumn", FromRows({{5}, {3}, {9}}), 3, 9},
                    RangeCase{"BothExtremes", FromRows({{0, 65535}}), 0, 65535},
                    RangeCase{"HighBitIsNoSign", FromRows({{0x7FFF, 0x8000}}), 0x7FFF, 0x8000}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(PixelRangeVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(PixelRangeVariants, {"scalar", "baseline", "avx2", "avx512"});
}

TEST(PixelRangeVariants, TheLastOneRuns) {
    const Frame frame = Noise(9, 7, 4095, 5);
    ExpectLastFormRuns(PixelRangeVariants, 1, [&] { FindPixelRange(frame.Data(), 9, 7); });
}

// From one pixel to past the widest step, and to one below and one above twice that.
TEST(PixelRange, EveryVariantSeesAnExtremeAtEveryPlace) {
    for (const PixelRangeVariant& variant : PixelRangeVariants())
        for (const size_t count : {1U, 2U, 15U, 16U, 17U, 63U, 64U, 65U, 127U, 128U, 129U, 257U}) {
            std::vector<uint16_t> pixels(count, uint16_t{40000});
            for (size_t i = 0; i < count; ++i) {
                SCOPED_TRACE(testing::Message() << variant.name << ' ' << i << " of " << count);
                pixels[i] = 65535;
                ASSERT_EQ(variant.run(pixels.data(), count).largest, 65535);
                pixels[i] = 3;
                ASSERT_EQ(variant.run(pixels.data(), count).smallest, 3);
                pixels[i] = 40000;
            }
            ASSERT_EQ(variant.run(pixels.data(), count).smallest, 40000);
            ASSERT_EQ(variant.run(pixels.data(), count).largest, 40000);
        }
}

TEST(PixelRange, EveryVariantGivesTheRangeOfNoise) {
    for (size_t count = 0; count <= 300; ++count) {
        const Frame noise = Noise(static_cast<int32_t>(count), 1, 65535, 20240512);
        const PixelRange expected = PixelRangeVariants().front().run(noise.Data(), count);
        for (const PixelRangeVariant& variant : PixelRangeVariants()) {
            const PixelRange range = variant.run(noise.Data(), count);
            ASSERT_EQ(range.smallest, expected.smallest) << variant.name << ' ' << count;
            ASSERT_EQ(range.largest, expected.largest) << variant.name << ' ' << count;
        }
    }
}

TEST(PixelRange, DoesNotDependOnTheOrientation) {
    const Frame frame = Noise(13, 7, 4095, 5);
    const Frame mirrored = MirrorLeftRight(MirrorTopBottom(frame));
    EXPECT_EQ(MinPixel(frame.Data(), 13, 7), MinPixel(mirrored.Data(), 13, 7));
    EXPECT_EQ(MaxPixel(frame.Data(), 13, 7), MaxPixel(mirrored.Data(), 13, 7));
}

}  // namespace
}  // namespace vastrelline
