#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "sensor/MarkedRows.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

std::vector<int32_t> MarkedRowsOf(const Frame& mask) {
    return FindMarkedRows({mask.Data(), mask.width, mask.height});
}

TEST(MarkedRows, AnyMarkCountsInAnyColumn) {
    EXPECT_EQ(MarkedRowsOf(FromRows({{0, 0, 1}, {0, 0, 0}, {255, 0, 0}, {0, 65535, 0}, {0, 0, 0}})),
              (std::vector<int32_t>{0, 2, 3}));
}

TEST(MarkedRows, EmptyMasksHaveNone) {
    EXPECT_TRUE(MarkedRowsOf(Flat(4, 3, 0)).empty());
    EXPECT_TRUE(MarkedRowsOf(Frame(0, 3)).empty());
    EXPECT_TRUE(MarkedRowsOf(Frame(3, 0)).empty());
}

}  // namespace
}  // namespace vastrelline
