// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

namespace vastrelline {

// What the logarithm of a number near a centre comes from: log(x) = log(x * inverse) - log(inverse).
struct LogarithmEntry {
    double inverse;  // of the centre, nearly: 16 bits behind the point
    double high;     // -log(inverse), a multiple of 2^-42
    double low;      // what high lacks of it
};

// For the centres 1 + i / 128 with i from 0 to 52, and half of that with i from 53 to 128.
extern const std::array<LogarithmEntry, 129> kLogarithms;
constexpr int kFirstHalvedCentre = 53;

}  // namespace vastrelline
