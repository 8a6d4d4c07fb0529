// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "report/WindowTable.h"

namespace vastrelline {
namespace {

struct WindowCase {
    const char* name;
    int32_t topValue;
    int32_t centre;
    int32_t width;
    int32_t curve;
    int32_t invert;
    std::vector<uint8_t> table;
};

class WindowTableTest : public testing::TestWithParam<WindowCase> {};

TEST_P(WindowTableTest, HasTheEntriesWorkedOutByHand) {
    const WindowCase& c = GetParam();
    EXPECT_EQ(c.table, BuildWindowTable(c.topValue, c.centre, c.width, c.curve, c.invert));
}

INSTANTIATE_TEST_SUITE_P(
    Curves, WindowTableTest,
    testing::Values(
        // From 4 - (2 - 1) = 3 to 4 + 2 = 6 with a slope of 255 / 4 = 63.75.
        WindowCase{"Linear", 7, 4, 4, 0, 0, {0, 0, 0, 0, 64, 128, 255, 255}},
        WindowCase{"LinearInverted", 7, 4, 4, 0, 1, {255, 255, 255, 255, 191, 127, 0, 0}},
        WindowCase{"UnknownCurveIsLinear", 7, 4, 4, 9, 0, {0, 0, 0, 0, 64, 128, 255, 255}},
        WindowCase{"AnyInvertButZeroInverts", 7, 4, 4, -1, -5, {255, 255, 255, 255, 191, 127, 0, 0}},
        // Half of 5 is 2.
        WindowCase{"OddWidthIsHalvedDownwards", 7, 4, 5, 0, 0, {0, 0, 0, 0, 64, 128, 255, 255}},
        // From -1 to 2: 63.75 + 0.5 and 127.5 + 0.5.
        WindowCase{"LinearBeginsBelowTheTable", 3, 0, 4, 0, 0, {64, 128, 255, 255}},
        WindowCase{"LinearEndsAboveTheTable", 3, 3, 4, 0, 0, {0, 0, 0, 64}},
        WindowCase{"LinearAllAboveTheTable", 3, 100, 4, 0, 0, {0, 0, 0, 0}},
        WindowCase{"LinearAllBelowTheTable", 3, -100, 4, 0, 0, {255, 255, 255, 255}},
        WindowCase{"LinearWithoutWidthSteps", 3, 2, 0, 0, 0, {0, 0, 255, 255}},
        WindowCase{"OneEntry", 0, 400, 800, 0, 0, {0}},
        // 255 / (1 + e^2) = 30.39, / (1 + e) = 68.58, / 2, / (1 + 1/e) = 186.42, / (1 + e^-2) = 224.6.
        WindowCase{"Logistic", 4, 2, 4, 1, 0, {30, 68, 127, 186, 224}},
        WindowCase{"LogisticInverted", 4, 2, 4, 1, 1, {225, 187, 128, 69, 31}},
        // Ends 6 and max(2 - 4, 1) = 1, k = 255 / ln 6 = 142.318: 1.5, 100.15, 157.85, 198.8, 230.55; then
        // 256.5 and 278.4 are clamped to 255.
        WindowCase{"Logarithmic", 7, 4, 4, 2, 0, {0, 1, 100, 157, 198, 230, 255, 255}},
        // The upper end is the top value 7: k = 255 / ln 7 = 131.044.
        WindowCase{"LogarithmicEndsAtTheTop", 7, 100, 4, 2, 0, {0, 1, 92, 145, 183, 212, 236, 255}},
        // The centre's sign is changed: ends 1 + 3 = 4 and 3 - 1 = 2, k = 255 / ln 2 = 367.887. Entry 3 is
        // 0.405465 * 367.887 + 1.5 = 150.67, entry 1 is far below 0.
        WindowCase{"LogarithmicLowerEndHasTheCentreTurned", 4, 1, 6, 2, 0, {0, 0, 1, 150, 255}},
        // Both ends 1: the factor is 0, and 1.5 is left; entry 0 stays 0.
        WindowCase{"LogarithmicWithEqualEnds", 3, 1, 0, 2, 0, {0, 1, 1, 1}},
        // (1/4)^(1/2.2) = 0.53253, (1/2)^ = 0.72974, (3/4)^ = 0.87742 of 255; above the window clamped to
        // 255.
        WindowCase{"PowerBright", 7, 4, 4, 3, 0, {0, 0, 0, 135, 186, 223, 255, 255}},
        // (1/4)^2.2 = 0.047366, (1/2)^2.2 = 0.217638, (3/4)^2.2 = 0.531049 of 255.
        WindowCase{"PowerDark", 7, 4, 4, 4, 0, {0, 0, 0, 12, 55, 135, 255, 255}},
        WindowCase{"PowerDarkInverted", 7, 4, 4, 4, 1, {255, 255, 255, 243, 200, 120, 0, 0}}),
    [](const auto& test) { return std::string(test.param.name); });

// 255 * 65535^2.2 passes 32 bits by far: still white, for entries are clamped to the range before they become
// whole numbers.
TEST(WindowTable, SteepCurveStaysWhiteFarAboveTheWindow) {
    const std::vector<uint8_t> table = BuildWindowTable(65535, 0, 1, 4, 0);
    EXPECT_EQ(0, table.front());
    EXPECT_EQ(255, table[1]);
    EXPECT_EQ(255, table[2000]);
    EXPECT_EQ(255, table.back());
}

TEST(WindowTable, PowerCurveWithoutWidthSteps) {
    // 0 / 0 is not a number and gives 0; what is infinite is white.
    EXPECT_EQ((std::vector<uint8_t>{0, 0, 0, 255}), BuildWindowTable(3, 2, 0, 3, 0));
}

}  // namespace
}  // namespace vastrelline
