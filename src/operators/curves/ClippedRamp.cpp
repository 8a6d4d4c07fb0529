// SPDX-License-Identifier: Apache-2.0
#include "operators/curves/ClippedRamp.h"

#include <algorithm>
#include <cstddef>

#include "pixels/FrameLimits.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

// The definition.
void MapScalar(uint16_t* pixels, size_t count, const ClippedRamp& ramp) {
    for (size_t i = 0; i < count; ++i) {
        const int32_t steps = std::clamp(pixels[i], ramp.low, ramp.high) - ramp.low;
        pixels[i] = LowBits16(ramp.isFalling ? ramp.atLow - steps : ramp.atLow + steps);
    }
}

#if VASTRELLINE_VECTOR_FORMS

// Becomes part of each function below, so that the compiler makes vectors of that function's width. With its
// top bit inverted a pixel orders as a number with a sign, the only one that every x86-64 has vectors for. As
// such a pixel of the same bits is 2^15 less or more, which the output takes back.
[[gnu::always_inline]] inline void MapInLanes(uint16_t* pixels, size_t count, const ClippedRamp& ramp) {
    constexpr uint16_t kTopBit = 0x8000;
    const auto low = static_cast<int16_t>(ramp.low ^ kTopBit);
    const auto high = static_cast<int16_t>(ramp.high ^ kTopBit);
    const auto clip = [=](uint16_t pixel) {
        const auto level = static_cast<int16_t>(pixel ^ kTopBit);
        const int16_t raised = level > low ? level : low;
        return static_cast<uint16_t>(raised < high ? raised : high);
    };
    // The sign stands outside the loops, which would not become vectors with it.
    if (ramp.isFalling) {
        const auto sum = static_cast<uint16_t>(ramp.atLow + ramp.low + kTopBit);
        for (size_t i = 0; i < count; ++i) pixels[i] = static_cast<uint16_t>(sum - clip(pixels[i]));
    } else {
        const auto shift = static_cast<uint16_t>(ramp.atLow - ramp.low + kTopBit);
        for (size_t i = 0; i < count; ++i) pixels[i] = static_cast<uint16_t>(shift + clip(pixels[i]));
    }
}

void MapBaseline(uint16_t* pixels, size_t count, const ClippedRamp& ramp) { MapInLanes(pixels, count, ramp); }
TARGET_AVX2 void MapAvx2(uint16_t* pixels, size_t count, const ClippedRamp& ramp) {
    MapInLanes(pixels, count, ramp);
}
TARGET_AVX512 void MapAvx512(uint16_t* pixels, size_t count, const ClippedRamp& ramp) {
    MapInLanes(pixels, count, ramp);
}

#endif

constexpr ClippedRampVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, MapScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, MapBaseline},
    {"avx2", InstructionSet::Avx2, MapAvx2},
    {"avx512", InstructionSet::Avx512, MapAvx512},
#endif
};

}  // namespace

std::optional<ClippedRamp> FindClippedRamp(std::span<const uint16_t> table) {
    if (table.empty()) return std::nullopt;
    const size_t last = std::min<size_t>(table.size() - 1, kTopPixel);
    size_t low = 0;
    while (low < last && table[low + 1] == table[0]) ++low;
    if (low == last) return ClippedRamp{0, 0, table[0], false};
    const bool isFalling = table[low + 1] == LowBits16(table[low] - 1);
    const int32_t step = isFalling ? -1 : 1;
    size_t high = low;
    while (high < last && table[high + 1] == LowBits16(table[high] + step)) ++high;
    const bool isFlatAbove = std::all_of(table.begin() + static_cast<std::ptrdiff_t>(high),
                                         table.begin() + static_cast<std::ptrdiff_t>(last) + 1,
                                         [&](uint16_t entry) { return entry == table[high]; });
    if (high == low || !isFlatAbove) return std::nullopt;
    return ClippedRamp{static_cast<uint16_t>(low), static_cast<uint16_t>(high), table[0], isFalling};
}

std::optional<RampAbove> FindRampAbove(std::span<const uint16_t> table) {
    if (table.empty()) return std::nullopt;
    const size_t last = std::min<size_t>(table.size() - 1, kTopPixel);
    size_t high = last;
    while (high > 0 && table[high - 1] == table[last]) --high;
    if (high == 0) return std::nullopt;
    const bool isFalling = table[high] == LowBits16(table[high - 1] - 1);
    const int32_t step = isFalling ? -1 : 1;
    size_t low = high;
    while (low > 0 && table[low] == LowBits16(table[low - 1] + step)) --low;
    if (low == high || low > last / 2) return std::nullopt;
    const auto head = static_cast<uint16_t>(low);
    return RampAbove{head, {head, static_cast<uint16_t>(high), table[low], isFalling}};
}

std::span<const ClippedRampVariant> ClippedRampVariants() { return AllowedVariants(kVariants); }

void ApplyClippedRamp(std::span<uint16_t> pixels, const ClippedRamp& ramp) {
    FastestOf(ClippedRampVariants()).run(pixels.data(), pixels.size(), ramp);
}

}  // namespace vastrelline
