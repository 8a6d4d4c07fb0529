// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "operators/curves/LookupTable.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

Frame Mapped(Frame frame, const std::vector<uint16_t>& table) {
    ApplyLookupTable(frame.Data(), frame.width, frame.height, table);
    return frame;
}

TEST(LookupTable, EachPixelTakesTheEntryAtItsValue) {
    EXPECT_THAT(Mapped(FromRows({{0, 1, 2}, {2, 3, 0}}), {40, 30, 20, 10}),
                EqualsFrame(FromRows({{40, 30, 20}, {20, 10, 40}})));
}

TEST(LookupTable, PixelBeyondTheTableTakesTheLastEntry) {
    EXPECT_THAT(Mapped(FromRows({{1, 2, 3, 65535}}), {5, 6, 7}), EqualsFrame(FromRows({{6, 7, 7, 7}})));
}

TEST(LookupTable, TableOfOneEntryMakesTheFrameFlat) {
    EXPECT_THAT(Mapped(FromRows({{0, 9}, {65535, 1}}), {123}), EqualsFrame(Flat(2, 2, 123)));
}

TEST(LookupTable, EmptyTableLeavesTheFrameAsItIs) {
    EXPECT_THAT(Mapped(FromRows({{3, 4}}), {}), EqualsFrame(FromRows({{3, 4}})));
}

TEST(LookupTable, EmptyFrameStaysEmpty) {
    EXPECT_THAT(Mapped(Frame(0, 0), {1, 2}), EqualsFrame(Frame(0, 0)));
    EXPECT_THAT(Mapped(Frame(4, 0), {1, 2}), EqualsFrame(Frame(4, 0)));
}

TEST(LookupTable, FullTableReachesEveryLevel) {
    std::vector<uint16_t> negative(0x10000);
    for (size_t level = 0; level < negative.size(); ++level)
        negative[level] = static_cast<uint16_t>(0xFFFF - level);
    EXPECT_THAT(Mapped(Ramp(256, 256, 0, 1, 256), negative), EqualsFrame(Ramp(256, 256, 0xFFFF, -1, -256)));
}

// Past one and two blocks of the walk, one below and one above.
TEST(LookupTable, EveryPixelOfEachLengthIsMapped) {
    const std::vector<uint16_t> table{9, 7, 5, 3};
    for (const int32_t width :
         {7, 8, 9, 511, 512, 513, 1023, 1024, 1025, 1031, 2047, 2048, 2049, 4095, 4096, 4097, 4103}) {
        const Frame frame = Noise(width, 1, 5, 20240513);
        Frame expected = frame;
        for (uint16_t& pixel : expected.pixels)
            pixel = static_cast<uint16_t>(9 - 2 * std::min<int>(pixel, 3));
        EXPECT_THAT(Mapped(frame, table), EqualsFrame(expected)) << width;
    }
}

// A single pixel beyond the table, at every place of a frame of two blocks and a rest.
TEST(LookupTable, PixelBeyondTheTableIsSeenWhereverItLies) {
    constexpr int32_t kWidth = 4103;
    const std::vector<uint16_t> table = {10, 20, 30};
    for (int32_t x = 0; x < kWidth; ++x) {
        Frame frame = Flat(kWidth, 1, 1);
        frame.At(x, 0) = 3;
        Frame expected = Flat(kWidth, 1, 20);
        expected.At(x, 0) = 30;
        ASSERT_EQ(Mapped(frame, table), expected) << x;
    }
}

TEST(LookupTable, WritesNothingBehindTheFrame) {
    std::vector<uint16_t> pixels{1, 1, 1, 1, 1};
    ApplyLookupTable(pixels.data(), 3, 1, std::vector<uint16_t>{0, 8});
    EXPECT_EQ(pixels, (std::vector<uint16_t>{8, 8, 8, 1, 1}));
}

}  // namespace
}  // namespace vastrelline
