// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_smoothing/SavgolKernel.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "elementary/Exponential.h"
#include "elementary/Power.h"
#include "stages/adaptive_smoothing/LuDecompose.h"

namespace vastrelline {

namespace {

// The sum of k^power over all positions k of the window. The right side is added first.
double SumPowers(int32_t left, int32_t right, int32_t power) {
    double sum = power == 0 ? 1.0 : 0.0;
    for (int32_t k = 1; k <= right; ++k) sum += Pow(static_cast<double>(k), static_cast<double>(power));
    for (int32_t k = 1; k <= left; ++k) sum += Pow(static_cast<double>(-k), static_cast<double>(power));
    return sum;
}

// The matrix of the normal equations: each antidiagonal holds one sum of powers.
SquareMatrix MakeNormalMatrix(int32_t left, int32_t right, int32_t order) {
    SquareMatrix matrix(order + 1);
    for (int32_t power = 0; power <= 2 * order; ++power) {
        const double sum = SumPowers(left, right, power);
        const int32_t limit = std::min(power, 2 * order - power);
        for (int32_t d = -limit; d <= limit; d += 2) matrix(1 + (power + d) / 2, 1 + (power - d) / 2) = sum;
    }
    return matrix;
}

// Whether no tap can be a number. If a side's powers overflow at order - 1 on both sides, every sum of an odd
// power from there on is infinity less infinity, and each row of the matrix ends in two neighbours of which
// one is such a sum. Whatever row the pivoting puts first, it spoils the last step of the solution, so all
// taps. Known beforehand, for a matrix of thousands of rows would hold up the host for hours.
bool OverflowsSurely(int32_t left, int32_t right, int32_t order) {
    return order >= 3 && std::isinf(Pow(static_cast<double>(std::min(left, right)), order - 1.0));
}

}  // namespace

void SavgolWindow(double* weights, int32_t mask) {
    const int32_t centre = mask / 2;
    double sum = 0.0;
    for (int32_t i = 0; i < mask; ++i) {
        const auto t = static_cast<float>((i - centre) * 4.0 / (mask - 1.0));
        // One rounding makes the square the same on every machine, which a library's power need not be.
        const float square = t * t;
        weights[i] = static_cast<double>(Exp(-square));
        sum += weights[i];
    }
    for (int32_t i = 0; i < mask; ++i) weights[i] /= sum;
}

void SavgolKernel(double* coefficients, int32_t mask, int32_t order) {
    assert(mask >= 1 && mask < std::numeric_limits<int32_t>::max());
    const int32_t tapCount = mask % 2 == 0 ? mask + 1 : mask;
    const int32_t side = tapCount / 2;
    if (SavgolCoefficients(coefficients, tapCount, side, side, 0, order) == 0) {
        std::fill_n(coefficients, tapCount, 1.0);
    }
    UnwrapKernel(coefficients, tapCount, side, side);
}

int32_t SavgolCoefficients(double* coefficients, int32_t tapCount, int32_t left, int32_t right,
                           int32_t derivative, int32_t order) {
    std::fill_n(coefficients, std::max(tapCount, 0), 0.0);
    const int64_t reach = int64_t{left} + right;
    if (tapCount < reach + 1 || left < 0 || right < 0 || derivative < 0 || derivative > order ||
        reach < order) {
        return 0;
    }
    if (OverflowsSurely(left, right, order)) {
        std::fill_n(coefficients, tapCount, std::numeric_limits<double>::quiet_NaN());
        return 1;
    }
    const int32_t size = order + 1;
    SquareMatrix matrix = MakeNormalMatrix(left, right, order);
    std::vector<int32_t> pivots(static_cast<size_t>(size) + 1);
    double sign = 1.0;
    if (LuDecompose(matrix, size, pivots, sign) == 0) return 0;
    // Of the inverse matrix one column is needed: that of the derivative.
    std::vector<double> column(static_cast<size_t>(size) + 1);
    column[static_cast<size_t>(derivative) + 1] = 1.0;
    LuSolve(matrix, size, pivots, column);
    for (int32_t k = -left; k <= right; ++k) {
        double sum = column[1];
        double factor = 1.0;
        for (int32_t j = 1; j <= order; ++j) {
            factor *= k;
            sum += column[static_cast<size_t>(j) + 1] * factor;
        }
        coefficients[(int64_t{tapCount} - k) % tapCount] = sum;
    }
    return 1;
}

void UnwrapKernel(double* coefficients, int32_t tapCount, int32_t left, int32_t right) {
    assert(tapCount == left + right + 1);
    std::vector<double> scratch;
    scratch.reserve(static_cast<size_t>(tapCount));
    for (int32_t i = left; i >= 0; --i) scratch.push_back(coefficients[i]);
    for (int32_t i = tapCount - 1; i > tapCount - 1 - right; --i) scratch.push_back(coefficients[i]);
    std::copy(scratch.begin(), scratch.end(), coefficients);
}

}  // namespace vastrelline
