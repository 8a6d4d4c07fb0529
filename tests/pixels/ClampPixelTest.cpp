// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>

#include "pixels/ClampPixel.h"

namespace vastrelline {
namespace {

struct ClampCase {
    const char* name;
    int32_t value;
    int32_t maxValue;
    uint16_t pixel;
};

class ClampToPixelTest : public testing::TestWithParam<ClampCase> {};

TEST_P(ClampToPixelTest, StaysWithinTheRange) {
    EXPECT_EQ(ClampToPixel(GetParam().value, GetParam().maxValue), GetParam().pixel);
}

INSTANTIATE_TEST_SUITE_P(
    Edges, ClampToPixelTest,
    testing::Values(ClampCase{"Inside", 17, 4095, 17}, ClampCase{"Zero", 0, 4095, 0},
                    ClampCase{"BelowZero", -1, 4095, 0}, ClampCase{"Lowest", INT32_MIN, 4095, 0},
                    ClampCase{"Top", 4095, 4095, 4095}, ClampCase{"AboveTop", 4096, 4095, 4095},
                    ClampCase{"Highest", INT32_MAX, 65535, 65535}, ClampCase{"TopBelowZero", 5, -1, 0}),
    [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vastrelline
