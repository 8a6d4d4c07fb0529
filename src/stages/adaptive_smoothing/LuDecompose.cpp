// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_smoothing/LuDecompose.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace vastrelline {

namespace {

// What a pivot of 0 becomes, so that a singular matrix gives large numbers and no division by 0.
constexpr double kTinyPivot = 1e-20;

// The reciprocal of the largest magnitude of each row, from index 1 on; none if there is a row of zeros.
std::vector<double> MakeRowScales(const SquareMatrix& matrix, int32_t size) {
    std::vector<double> scales(static_cast<size_t>(size) + 1);
    for (int32_t row = 1; row <= size; ++row) {
        double largest = 0.0;
        for (int32_t column = 1; column <= size; ++column) {
            largest = std::max(largest, std::fabs(matrix(row, column)));
        }
        if (largest == 0.0) return {};
        scales[static_cast<size_t>(row)] = 1.0 / largest;
    }
    return scales;
}

// An entry without the products of what stands left of it and above it, up to inner index `last`.
double ReduceEntry(const SquareMatrix& matrix, int32_t row, int32_t column, int32_t last) {
    double value = matrix(row, column);
    for (int32_t k = 1; k <= last; ++k) value -= matrix(row, k) * matrix(k, column);
    return value;
}

void SwapRows(SquareMatrix& matrix, int32_t size, int32_t a, int32_t b) {
    for (int32_t column = 1; column <= size; ++column) std::swap(matrix(a, column), matrix(b, column));
}

}  // namespace

SquareMatrix::SquareMatrix(int32_t size)
    : size_(size), entries_(static_cast<size_t>(size) * static_cast<size_t>(size)) {
    assert(size >= 1);
}

size_t SquareMatrix::IndexOf(int32_t row, int32_t column) const {
    assert(row >= 1 && row <= size_ && column >= 1 && column <= size_);
    return static_cast<size_t>(row - 1) * static_cast<size_t>(size_) + static_cast<size_t>(column - 1);
}

int32_t LuDecompose(SquareMatrix& matrix, int32_t size, std::vector<int32_t>& pivots, double& sign) {
    std::vector<double> scales = MakeRowScales(matrix, size);
    if (scales.empty()) return 0;
    sign = 1.0;
    for (int32_t column = 1; column <= size; ++column) {
        for (int32_t row = 1; row < column; ++row) {
            matrix(row, column) = ReduceEntry(matrix, row, column, row - 1);
        }
        // Of equal merits the last wins. Merits that are no numbers win nothing and leave the row in place.
        double best = 0.0;
        int32_t pivot = column;
        for (int32_t row = column; row <= size; ++row) {
            matrix(row, column) = ReduceEntry(matrix, row, column, column - 1);
            const double merit = scales[static_cast<size_t>(row)] * std::fabs(matrix(row, column));
            if (merit >= best) {
                best = merit;
                pivot = row;
            }
        }
        if (pivot != column) {
            SwapRows(matrix, size, pivot, column);
            sign = -sign;
            scales[static_cast<size_t>(pivot)] = scales[static_cast<size_t>(column)];
        }
        pivots[static_cast<size_t>(column)] = pivot;
        if (matrix(column, column) == 0.0) matrix(column, column) = kTinyPivot;
        if (column == size) continue;
        const double reciprocal = 1.0 / matrix(column, column);
        for (int32_t row = column + 1; row <= size; ++row) matrix(row, column) *= reciprocal;
    }
    return 1;
}

void LuSolve(const SquareMatrix& matrix, int32_t size, const std::vector<int32_t>& pivots,
             std::vector<double>& vector) {
    const auto at = [&](int32_t row) -> double& { return vector[static_cast<size_t>(row)]; };
    int32_t firstNonZero = 0;
    for (int32_t row = 1; row <= size; ++row) {
        const int32_t pivot = pivots[static_cast<size_t>(row)];
        double value = at(pivot);
        at(pivot) = at(row);
        if (firstNonZero != 0) {
            for (int32_t k = firstNonZero; k < row; ++k) value -= matrix(row, k) * at(k);
        } else if (value != 0.0) {
            firstNonZero = row;
        }
        at(row) = value;
    }
    for (int32_t row = size; row >= 1; --row) {
        double value = at(row);
        for (int32_t k = row + 1; k <= size; ++k) value -= matrix(row, k) * at(k);
        at(row) = value / matrix(row, row);
    }
}

}  // namespace vastrelline
