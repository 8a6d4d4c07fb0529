// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frames/SizeGuess.h"

namespace vastrelline {
namespace {

struct GuessCase {
    const char* name;
    uint64_t pixels;
    std::vector<FrameSize> sizes;
};

class GuessFrameSizesTest : public testing::TestWithParam<GuessCase> {};

TEST_P(GuessFrameSizesTest, ListsSizesByWidth) {
    EXPECT_EQ(GuessFrameSizes(2 * GetParam().pixels), GetParam().sizes);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, GuessFrameSizesTest,
    testing::Values(
        GuessCase{"LargeSensor", 1300 * 1668, {{1300, 1668}, {1390, 1560}, {1560, 1390}, {1668, 1300}}},
        GuessCase{"SmallSensor", 900 * 1250, {{900, 1250}, {1000, 1125}, {1125, 1000}, {1250, 900}}},
        GuessCase{"TwoToThree", 1000 * 1500, {{1000, 1500}, {1200, 1250}, {1250, 1200}, {1500, 1000}}},
        // 2400 x 3614 is a little slenderer than 2 to 3.
        GuessCase{"TwiceTheResolution",
                  2600 * 3336,
                  {{2496, 3475}, {2600, 3336}, {2780, 3120}, {3120, 2780}, {3336, 2600}, {3475, 2496}}},
        // 1080 x 1080 and 810 x 1440 would be others; the three nearest to a sensor's shape are told.
        GuessCase{"ManyShapes",
                  1080 * 1080,
                  {{900, 1296}, {960, 1215}, {972, 1200}, {1200, 972}, {1215, 960}, {1296, 900}}},
        GuessCase{"Square", 17 * 17, {{17, 17}}}, GuessCase{"OnePixel", 1, {{1, 1}}},
        GuessCase{"UpToTwiceIfThereIsNoBetter", 2 * 17 * 17, {{17, 34}, {34, 17}}},
        GuessCase{"UpToFourTimesIfThereIsNoBetter", 3, {{1, 3}, {3, 1}}},
        GuessCase{"PrimeNumber", 1000003, {}}, GuessCase{"Nothing", 0, {}},
        GuessCase{"TooManyPixels", uint64_t{1} << 29, {}}),
    [](const auto& test) { return test.param.name; });

TEST(SizeGuess, AnOddNumberOfBytesFitsNothing) { EXPECT_TRUE(GuessFrameSizes(2 * 17 * 17 + 1).empty()); }

TEST(SizeGuess, IsTheTrueSizeAmongOthersForEverySensorShape) {
    for (int32_t width = 500; width < 1500; width += 20) {
        const FrameSize size{width, width * 1668 / 1300};
        const std::vector<FrameSize> sizes =
            GuessFrameSizes(2 * static_cast<uint64_t>(size.width) * static_cast<uint64_t>(size.height));
        EXPECT_LE(sizes.size(), 6U);
        EXPECT_NE(std::find(sizes.begin(), sizes.end(), size), sizes.end()) << FormatFrameSize(size);
    }
}

TEST(SizeGuess, SaysWhatTheBytesMayBe) {
    EXPECT_EQ(DescribeByteCount(4336800),
              "4336800 bytes fit 1300x1668, 1390x1560, 1560x1390 or 1668x1300 at 16 bits");
    EXPECT_EQ(DescribeByteCount(2), "2 bytes fit 1x1 at 16 bits");
    EXPECT_EQ(DescribeByteCount(4), "4 bytes fit 1x2 or 2x1 at 16 bits");
    EXPECT_EQ(DescribeByteCount(4336801), "4336801 bytes, an odd number, fit no frame of 16 bits");
    EXPECT_EQ(DescribeByteCount(1), "1 byte, an odd number, fit no frame of 16 bits");
    EXPECT_EQ(DescribeByteCount(2000006), "2000006 bytes fit no frame of a usual shape at 16 bits");
    EXPECT_EQ(DescribeByteCount(0), "0 bytes fit no frame of a usual shape at 16 bits");
}

}  // namespace
}  // namespace vastrelline
