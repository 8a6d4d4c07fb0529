// SPDX-License-Identifier: Apache-2.0
#include "sensor/SpotPower.h"

#include <algorithm>
#include <bit>
#include <numbers>
#include <utility>

#include "elementary/Logarithm.h"
#include "elementary/Power.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

// The definition, of one pixel: the power in 32-bit floats, the product in doubles, truncated.
uint16_t RaisePixel(uint16_t pixel, float exponent, int32_t peak) {
    const float x = static_cast<float>(pixel) / static_cast<float>(peak);
    return LowBits16(TruncateToInt32(static_cast<double>(Pow(x, exponent)) * peak));
}

void RaiseScalar(const SpotPowerCall& call, const SpotPowerTables& tables) {
    for (size_t i = 0; i < call.count; ++i) {
        call.pixels[i] = RaisePixel(call.pixels[i], tables.exponents[call.means[i]], tables.peak);
    }
}

#if VASTRELLINE_VECTOR_FORMS

constexpr size_t kBlock = 512;

struct Estimates {
    uint16_t pixels[kBlock];
    uint16_t areUnsure[kBlock];  // not 0 where the estimate is too near to a whole number
};

// 2^x for x from -100 to 0: the whole part by the exponent's bits, the rest, at most a half, by a sum of
// seven powers. What that leaves out, 6e-9 of the result, is less than the roundings.
[[gnu::always_inline]] inline float PowerOfTwo(float x) {
    constexpr float kShift = 0x1.8p23F;  // moves the whole part, rounded, to the lowest bits
    const float shifted = x + kShift;
    const float rest = (x - (shifted - kShift)) * 0.69314718056F;
    float power = 1.0F / 5040;
    power = power * rest + 1.0F / 720;
    power = power * rest + 1.0F / 120;
    power = power * rest + 1.0F / 24;
    power = power * rest + 1.0F / 6;
    power = power * rest + 0.5F;
    power = power * rest + 1.0F;
    power = power * rest + 1.0F;
    constexpr uint32_t kExponentBits = 23;
    return std::bit_cast<float>(std::bit_cast<uint32_t>(power) +
                                (std::bit_cast<uint32_t>(shifted) << kExponentBits));
}

// Becomes part of each function below, so that the compiler makes vectors of that function's width.
//
// Almost every pixel is told by an estimate: x^p * peak is 2^t * peak with t = p * log2(x). One rounding is
// up to u = 2^-24 of its result. Those of t make 2^t wrong by 2.1 |t| u of itself, all others by 6 u:
// together that is at most 6 u of the peak, for 2^t shrinks faster than 2.1 |t| grows. The power
// function errs by half a u. Where the whole part is the same for 1e-6, which is 16 u, of the peak less and
// more, it is the result; elsewhere, once in a few hundred pixels of 12 bits, the definition decides.
[[gnu::always_inline]] inline void RaiseInLanes(const SpotPowerCall& call, const SpotPowerTables& tables) {
    const auto peak = static_cast<float>(tables.peak);
    const float tolerance = peak * 1e-6F;
    const auto last = static_cast<uint16_t>(tables.peak);
    const float* exponents = tables.exponents.data();
    const float* logarithms = tables.logarithms.data();
    float powers[kBlock];
    Estimates estimates;
    for (size_t start = 0; start < call.count; start += kBlock) {
        uint16_t* pixels = call.pixels + start;
        const uint16_t* means = call.means + start;
        const size_t count = std::min(kBlock, call.count - start);
        for (size_t i = 0; i < count; ++i) powers[i] = exponents[means[i]] * logarithms[pixels[i]];
        for (size_t i = 0; i < count; ++i) {
            const float level = PowerOfTwo(powers[i]) * peak;
            const auto low = static_cast<int32_t>(level - tolerance);
            const auto high = static_cast<int32_t>(level + tolerance);
            estimates.pixels[i] = static_cast<uint16_t>(low);
            estimates.areUnsure[i] = static_cast<uint16_t>(low ^ high);
        }
        // Both ends stay, whatever the exponent. In the loop above this would cost the compiler its vectors.
        for (size_t i = 0; i < count; ++i) {
            const bool stays = (pixels[i] == 0) | (pixels[i] == last);
            estimates.pixels[i] = stays ? pixels[i] : estimates.pixels[i];
            estimates.areUnsure[i] = stays ? uint16_t{0} : estimates.areUnsure[i];
        }
        for (size_t i = 0; i < count; ++i) {
            if (estimates.areUnsure[i] == 0) {
                pixels[i] = estimates.pixels[i];
            } else {
                pixels[i] = RaisePixel(pixels[i], tables.exponents[means[i]], tables.peak);
            }
        }
    }
}

void RaiseBaseline(const SpotPowerCall& call, const SpotPowerTables& tables) { RaiseInLanes(call, tables); }
TARGET_AVX2 void RaiseAvx2(const SpotPowerCall& call, const SpotPowerTables& tables) {
    RaiseInLanes(call, tables);
}

#endif

constexpr SpotPowerVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, RaiseScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, RaiseBaseline},
    {"avx2", InstructionSet::Avx2, RaiseAvx2},
#endif
};

}  // namespace

std::span<const SpotPowerVariant> SpotPowerVariants() { return AllowedVariants(kVariants); }

SpotPowerTables MakeSpotPowerTables(int32_t peak, std::vector<float> exponents) {
    // 0 has none, and takes none: it stays 0.
    std::vector<float> logarithms(static_cast<size_t>(peak) + 1);
    for (int32_t level = 1; level <= peak; ++level) {
        const float share = static_cast<float>(level) / static_cast<float>(peak);
        logarithms[static_cast<size_t>(level)] = static_cast<float>(Log(double{share}) * std::numbers::log2e);
    }
    return {peak, std::move(exponents), std::move(logarithms)};
}

}  // namespace vastrelline
