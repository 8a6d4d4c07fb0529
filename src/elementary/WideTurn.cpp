// SPDX-License-Identifier: Apache-2.0
#include "elementary/WideTurn.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include "elementary/WideNumber.h"

namespace vastrelline {

namespace {

constexpr int kLimbBits = 32;

// The first 1536 bits of 2 / pi behind the point, the highest first: enough for the largest double.
constexpr uint32_t kTwoOverPi[] = {
    0xA2F9836E, 0x4E441529, 0xFC2757D1, 0xF534DDC0, 0xDB629599, 0x3C439041, 0xFE5163AB, 0xDEBBC561,
    0xB7246E3A, 0x424DD2E0, 0x06492EEA, 0x09D1921C, 0xFE1DEB1C, 0xB129A73E, 0xE88235F5, 0x2EBB4484,
    0xE99C7026, 0xB45F7E41, 0x3991D639, 0x835339F4, 0x9C845F8B, 0xBDF9283B, 0x1FF897FF, 0xDE05980F,
    0xEF2F118B, 0x5A0A6D1F, 0x6D367ECF, 0x27CB09B7, 0x4F463F66, 0x9E5FEA2D, 0x7527BAC7, 0xEBE5F17B,
    0x3D0739F7, 0x8A5292EA, 0x6BFB5FB1, 0x1F8D5D08, 0x56033046, 0xFC7B6BAB, 0xF0CFBC20, 0x9AF4361D,
    0xA9E39161, 0x5EE61B08, 0x6599855F, 0x14A06840, 0x8DFFD880, 0x4D732731, 0x06061556, 0xCA73A8C9};

constexpr WideNumber kQuarterTurn({0x1C6809BB, 0xA29410F3, 0x76273644, 0x04177D4C, 0x14CF98E8, 0x52049C11,
                                   0x01B839A2, 0x898CC517, 0x42D18469, 0x921FB544, 1, 0});

// An angle of `quarters` quarter turns, 0 to 3, and a part of one, below 1.
struct Quarters {
    uint32_t quarters;
    WideNumber part;
};

// 32 bits of 2 / pi, from the one of weight 2^-(first + 1) on.
uint32_t BitsOfTwoOverPi(int first) {
    const auto limbAt = [](int i) {
        return i >= 0 && i < static_cast<int>(std::size(kTwoOverPi)) ? uint64_t{kTwoOverPi[i]} : 0;
    };
    constexpr int kFar = 4096;  // a multiple of a limb's bits that makes every place positive
    const int limb = (first + kFar) / kLimbBits - kFar / kLimbBits;
    const int skipped = (first + kFar) % kLimbBits;
    const uint64_t pair = (limbAt(limb) << kLimbBits) | limbAt(limb + 1);
    return static_cast<uint32_t>((pair << skipped) >> kLimbBits);
}

// x * 2 / pi without its multiples of 4. Of 2 / pi those bits suffice whose product with the last bit of x is
// below 4; behind them come as many as the rest may lose at its front, when it is near a quarter turn.
Quarters CountQuarters(const DoubleParts& x) {
    constexpr int kTurnBits = 2;
    constexpr size_t kWindow = 15;
    std::array<uint32_t, kWindow> product{};  // a fraction of 4 quarters, the lowest first
    const uint64_t low = x.magnitude & 0xFFFFFFFF;
    const uint64_t high = x.magnitude >> kLimbBits;
    uint64_t carry = 0;
    uint64_t before = 0;
    for (size_t i = 0; i < kWindow; ++i) {
        const int first = x.exponent - kTurnBits + static_cast<int>(kWindow - 1 - i) * kLimbBits;
        const uint64_t bits = BitsOfTwoOverPi(first);
        const uint64_t lowProduct = bits * low;
        const uint64_t highProduct = before * high;
        carry += (lowProduct & 0xFFFFFFFF) + (highProduct & 0xFFFFFFFF);
        product[i] = static_cast<uint32_t>(carry);
        carry = (carry >> kLimbBits) + (lowProduct >> kLimbBits) + (highProduct >> kLimbBits);
        before = bits;
    }
    WideNumber::Limbs limbs{};
    for (size_t i = 0; i < WideNumber::kLimbs; ++i) limbs[i] = product[kWindow - WideNumber::kLimbs + i];
    // The highest limbs stand in front of the point there: 2^64 times the fraction of 4 quarters.
    const WideNumber turned(limbs);
    return {static_cast<uint32_t>(turned.Whole() >> (2 * kLimbBits - kTurnBits)),
            turned.Shifted(kTurnBits).Shifted(-WideNumber::kWholeBits)};
}

// 1 - x^2 / (a (a + 1)) (1 - x^2 / ((a + 2) (a + 3)) (...)): the cosine with a = 1, the sine, over x, with
// a = 2. For x up to an eighth of a turn.
WideNumber AlternatingSeries(const WideNumber& square, uint32_t a) {
    constexpr uint32_t kTerms = 36;  // the next one is below 2^-350
    const WideNumber one(1);
    WideNumber sum = one;
    for (uint32_t n = kTerms; n > 0; --n) {
        const uint32_t factor = a + 2 * (n - 1);
        sum = one - (square * sum).DividedBy(factor * (factor + 1));
    }
    return sum;
}

WideValue SineOfQuarters(const Quarters& angle, bool isNegative) {
    const bool isTurnedBack = angle.quarters >= 2;
    bool isCosine = angle.quarters % 2 != 0;
    WideNumber part = angle.part;
    if (WideNumber(1).Shifted(-1) < part) {
        part = WideNumber(1) - part;
        isCosine = !isCosine;
    }
    const WideNumber radians = part * kQuarterTurn;
    const WideNumber square = radians * radians;
    return {isCosine ? AlternatingSeries(square, 1) : radians * AlternatingSeries(square, 2), 0,
            isTurnedBack != isNegative};
}

}  // namespace

WideValue WideSin(double x) {
    const DoubleParts parts = SplitDouble(x);
    return SineOfQuarters(CountQuarters(parts), parts.isNegative);
}

WideValue WideCos(double x) {
    Quarters angle = CountQuarters(SplitDouble(x));
    angle.quarters = (angle.quarters + 1) % 4;
    return SineOfQuarters(angle, false);
}

}  // namespace vastrelline
