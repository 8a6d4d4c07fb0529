// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "stages/adaptive_smoothing/LuDecompose.h"

namespace vastrelline {
namespace {

using Rows = std::vector<std::vector<double>>;

SquareMatrix FromRows(const Rows& rows) {
    SquareMatrix matrix(static_cast<int32_t>(rows.size()));
    for (size_t y = 0; y < rows.size(); ++y)
        for (size_t x = 0; x < rows.size(); ++x)
            matrix(static_cast<int32_t>(y) + 1, static_cast<int32_t>(x) + 1) = rows[y][x];
    return matrix;
}

Rows ToRows(const SquareMatrix& matrix, int32_t size) {
    Rows rows;
    for (int32_t y = 1; y <= size; ++y) {
        rows.emplace_back();
        for (int32_t x = 1; x <= size; ++x) rows.back().push_back(matrix(y, x));
    }
    return rows;
}

struct SystemCase {
    const char* name;
    Rows matrix;
    std::vector<double> rightSide;
    std::vector<double> solution;
    double sign;
};

class LuSolveTest : public testing::TestWithParam<SystemCase> {};

TEST_P(LuSolveTest, FindsTheSolution) {
    const SystemCase& c = GetParam();
    const auto size = static_cast<int32_t>(c.matrix.size());
    SquareMatrix matrix = FromRows(c.matrix);
    std::vector<int32_t> pivots(c.matrix.size() + 1);
    double sign = 0.0;
    ASSERT_EQ(LuDecompose(matrix, size, pivots, sign), 1);
    EXPECT_EQ(sign, c.sign);
    std::vector<double> vector{-99.0};  // entry 0 is nobody's
    vector.insert(vector.end(), c.rightSide.begin(), c.rightSide.end());
    LuSolve(matrix, size, pivots, vector);
    EXPECT_EQ(vector[0], -99.0);
    for (size_t i = 0; i < c.solution.size(); ++i) EXPECT_NEAR(vector[i + 1], c.solution[i], 1e-14) << i;
}

INSTANTIATE_TEST_SUITE_P(
    Systems, LuSolveTest,
    testing::Values(
        SystemCase{"OneEquation", {{4}}, {2}, {0.5}, 1.0},
        SystemCase{"RowsSwapped", {{0, 2}, {1, 0}}, {4, 3}, {3, 2}, -1.0},
        // The scale decides: the first row has the larger entry but the smaller share of its row.
        SystemCase{"PivotByShareOfTheRow", {{10, 1000}, {1, 1}}, {1010, 2}, {1, 1}, -1.0},
        SystemCase{
            "LeadingZerosOfTheRightSide", {{2, 0, 0}, {0, 4, 0}, {1, 0, 8}}, {0, 0, 4}, {0, 0, 0.5}, 1.0},
        // x + y + z = 6, 2y + 5z = 19, 2x + 5y - z = 9
        SystemCase{"ThreeUnknowns", {{1, 1, 1}, {0, 2, 5}, {2, 5, -1}}, {6, 19, 9}, {1, 2, 3}, -1.0}),
    [](const auto& test) { return test.param.name; });

TEST(LuDecompose, OfEqualMeritsTheLastRowBecomesThePivot) {
    SquareMatrix matrix = FromRows({{2, 1}, {-2, 1}});
    std::vector<int32_t> pivots(3);
    double sign = 0.0;
    ASSERT_EQ(LuDecompose(matrix, 2, pivots, sign), 1);
    EXPECT_EQ(pivots, (std::vector<int32_t>{0, 2, 2}));
    EXPECT_EQ(sign, -1.0);
    // The rows stand swapped; below the pivot -2 is 2 / -2; 1 - -1 * 1 is 2.
    EXPECT_EQ(ToRows(matrix, 2), (Rows{{-2, 1}, {-1, 2}}));
}

TEST(LuDecompose, PivotOfZeroBecomesTiny) {
    SquareMatrix matrix = FromRows({{1, 2}, {2, 4}});
    std::vector<int32_t> pivots(3);
    double sign = 0.0;
    ASSERT_EQ(LuDecompose(matrix, 2, pivots, sign), 1);
    EXPECT_EQ(ToRows(matrix, 2), (Rows{{2, 4}, {0.5, 1e-20}}));
}

TEST(LuDecompose, RowOfZerosIsRefusedAndLeavesTheMatrix) {
    SquareMatrix matrix = FromRows({{1, 2}, {0, 0}});
    std::vector<int32_t> pivots(3);
    double sign = 0.0;
    EXPECT_EQ(LuDecompose(matrix, 2, pivots, sign), 0);
    EXPECT_EQ(ToRows(matrix, 2), (Rows{{1, 2}, {0, 0}}));
}

// Row 1 goes down to place 2 and takes its scale of 1/1000 along: 9.5 / 1000 loses against 0.5 / 2. With the
// scale of the row that stood there, 1/4, it would win.
TEST(LuDecompose, ScaleMovesWithItsRow) {
    SquareMatrix matrix = FromRows({{1, 10, 1000}, {4, 2, 4}, {1, 1, 2}});
    std::vector<int32_t> pivots(4);
    double sign = 0.0;
    ASSERT_EQ(LuDecompose(matrix, 3, pivots, sign), 1);
    EXPECT_EQ(pivots, (std::vector<int32_t>{0, 2, 3, 3}));
    EXPECT_EQ(sign, 1.0);
    EXPECT_EQ(ToRows(matrix, 3), (Rows{{4, 2, 4}, {0.25, 0.5, 1}, {0.25, 19, 980}}));
}

}  // namespace
}  // namespace vastrelline
