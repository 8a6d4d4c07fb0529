// SPDX-License-Identifier: Apache-2.0
#include "phantom/PhantomRandom.h"

#include <algorithm>
#include <cmath>

#include "phantom/ExactExp.h"

namespace vastrelline {
namespace {

constexpr uint64_t kStep = 0x9E3779B97F4A7C15;  // 2^64 divided by the golden ratio, odd
constexpr double kSmallMean = 40.0;             // above, a normal number differs from the count by too little

// Every bit of the result depends on every bit of the argument, and no two arguments give the same result.
uint64_t Stir(uint64_t bits) {
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EB;
    return bits ^ (bits >> 31);
}

}  // namespace

uint64_t PhantomRandom::NextBits() {
    state_ += kStep;
    return Stir(state_);
}

double PhantomRandom::Uniform() {
    return static_cast<double>(NextBits() >> 11) * 0x1p-53;  // the 53 bits that a double holds
}

double PhantomRandom::Normal() {
    // Four 16-bit parts of each of three draws. A part p stands for the uniform number (p + 0.5) / 65536.
    constexpr uint64_t kPart = 0xFFFF;
    uint64_t sum = 0;
    for (int draw = 0; draw < 3; ++draw) {
        const uint64_t bits = NextBits();
        sum += (bits & kPart) + ((bits >> 16) & kPart) + ((bits >> 32) & kPart) + (bits >> 48);
    }
    return (static_cast<double>(sum) + 6.0) * 0x1p-16 - 6.0;
}

double PhantomRandom::Poisson(double mean) {
    if (!(mean > 0.0)) return 0.0;
    if (mean >= kSmallMean) return std::max(0.0, std::floor(mean + std::sqrt(mean) * Normal() + 0.5));
    // Multiply uniform numbers until the product falls below e^-mean: the number of factors before that is
    // distributed as wanted.
    const double limit = ExactExp(-mean);
    double product = Uniform();
    double count = 0.0;
    while (product > limit) {
        product *= Uniform();
        count += 1.0;
    }
    return count;
}

uint64_t StirBits(uint64_t seed, int64_t x, int64_t y) {
    return Stir(Stir(Stir(seed + kStep) + static_cast<uint64_t>(x) * kStep) +
                static_cast<uint64_t>(y) * kStep);
}

}  // namespace vastrelline
