// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cfloat>

namespace vastrelline {

// A number as the unrounded sum of two doubles, the lower one a last place of the higher or less: some 106
// bits. None of this holds with fused operations, with wider registers or with another rounding than to
// nearest.
struct DoubleDouble {
    double high;
    double low;
};

// Flags of a build of its own may ask for what would undo it without a word.
static_assert(FLT_EVAL_METHOD == 0, "doubles have to be computed as doubles: on 32-bit x86, by -mfpmath=sse");
#if defined(__FAST_MATH__) || defined(__ASSOCIATIVE_MATH__)
#error "the compiler must keep the order of sums: no -ffast-math, no -Ofast"
#endif

// a + b without any loss (Knuth, 1969).
inline DoubleDouble ExactSum(double a, double b) {
    const double sum = a + b;
    const double added = sum - a;
    return {sum, (a - (sum - added)) + (b - added)};
}

// The same for an a that is 0 or not smaller than b (Dekker, 1971).
inline DoubleDouble ExactSumOfOrdered(double a, double b) {
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

// x rounded to 26 bits; x less it has 26 bits, too (Veltkamp, 1968). For x below 2^996.
inline double UpperHalf(double x) {
    const double moved = x * 0x1.0000002p27;
    return moved - (moved - x);
}

// a * b without any loss (Dekker, 1971), where neither the product nor what is left of it is out of range.
inline DoubleDouble ExactProduct(double a, double b) {
    const double product = a * b;
    const double aHigh = UpperHalf(a);
    const double aLow = a - aHigh;
    const double bHigh = UpperHalf(b);
    const double bLow = b - bHigh;
    return {product, ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow};
}

// Whether every number within `error` of the sum has one and the same nearest double, which is high + low
// (Ziv, 1991).
inline bool IsSurelyRounded(DoubleDouble sum, double error) {
    return sum.high + (sum.low - error) == sum.high + (sum.low + error);
}

}  // namespace vastrelline
