#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "image/PixelRange.h"
#include "support/Frames.h"

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

TEST(PixelRange, SeesAnExtremeAtEveryPlace) {
    // Past the widest vector, one below and one above each power of 2.
    for (int32_t width = 1; width <= 67; ++width)
        for (int32_t x = 0; x < width; ++x) {
            SCOPED_TRACE(testing::Message() << x << " of " << width);
            const Frame bright = Impulse(width, 1, x, 0, 4095, 100);
            const Frame dark = Impulse(width, 1, x, 0, 3, 100);
            ASSERT_EQ(MaxPixel(bright.Data(), width, 1), 4095);
            ASSERT_EQ(MinPixel(dark.Data(), width, 1), 3);
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
