// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <initializer_list>
#include <limits>

#include "elementary/WideExponential.h"
#include "elementary/WideNumber.h"
#include "elementary/WideValue.h"

namespace vastrelline {

// The sum of two numbers, its exponent 0.
inline WideValue SignedSum(const WideValue& a, const WideValue& b) {
    const WideNumber left = a.magnitude.Shifted(a.exponent);
    const WideNumber right = b.magnitude.Shifted(b.exponent);
    if (a.isNegative == b.isNegative) return {left + right, 0, a.isNegative};
    if (left < right) return {right - left, 0, b.isNegative};
    return {left - right, 0, a.isNegative};
}

inline WideValue Negated(WideValue value) {
    value.isNegative = !value.isNegative;
    return value;
}

inline WideValue SignedProduct(const WideValue& a, const WideValue& b) {
    return {a.magnitude * b.magnitude, a.exponent + b.exponent, a.isNegative != b.isNegative};
}

// The sum of doubles without any loss, all being multiples of 2^-320.
inline WideValue SumOf(std::initializer_list<double> doubles) {
    WideValue sum;
    for (const double value : doubles) sum = SignedSum(sum, WideFromDouble(value));
    return sum;
}

// The power of two at or below the distance of two numbers; the lowest integer for equal ones.
inline int DistancePlace(const WideValue& a, const WideValue& b) {
    const WideNumber distance = SignedSum(a, Negated(b)).magnitude;
    return distance.IsZero() ? std::numeric_limits<int>::min() : distance.TopBit();
}

}  // namespace vastrelline
