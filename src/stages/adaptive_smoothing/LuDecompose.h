// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vastrelline {

// A square matrix whose rows and columns count from 1.
class SquareMatrix {
public:
    explicit SquareMatrix(int32_t size);  // all 0; size is 1 or more

    double& operator()(int32_t row, int32_t column) { return entries_[IndexOf(row, column)]; }
    double operator()(int32_t row, int32_t column) const { return entries_[IndexOf(row, column)]; }

private:
    size_t IndexOf(int32_t row, int32_t column) const;

    int32_t size_;
    std::vector<double> entries_;
};

// Splits a matrix into triangles in its own place, by Crout's method with implicitly scaled partial pivoting.
//
// size      of the matrix
// pivots    size + 1 entries, from 1 on: the row that took the place of each row; entry 0 is not used
// sign      1.0, or -1.0 after an odd number of swaps
// Order     products are taken off an entry one after the other, the inner index ascending
// Returns   1, or 0 if a row holds nothing but 0; then the matrix is as it was
// Special   a pivot of 0 is replaced by 1e-20
[[nodiscard]] int32_t LuDecompose(SquareMatrix& matrix, int32_t size, std::vector<int32_t>& pivots,
                                  double& sign);

// Solves with what LuDecompose left, in the vector's own place.
//
// vector   the right-hand side, then the solution: size + 1 entries, from 1 on
void LuSolve(const SquareMatrix& matrix, int32_t size, const std::vector<int32_t>& pivots,
             std::vector<double>& vector);

}  // namespace vastrelline
