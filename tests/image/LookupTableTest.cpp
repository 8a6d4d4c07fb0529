#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "image/LookupTable.h"
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

TEST(LookupTable, WritesNothingBehindTheFrame) {
    std::vector<uint16_t> pixels{1, 1, 1, 1, 1};
    ApplyLookupTable(pixels.data(), 3, 1, std::vector<uint16_t>{0, 8});
    EXPECT_EQ(pixels, (std::vector<uint16_t>{8, 8, 8, 1, 1}));
}

}  // namespace
}  // namespace vastrelline
