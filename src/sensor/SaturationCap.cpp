// SPDX-License-Identifier: Apache-2.0
#include "sensor/SaturationCap.h"

#include <algorithm>

#include "pixels/FrameView.h"

namespace vastrelline {

namespace {

// The definition.
void CapScalar(uint16_t* pixels, size_t count, int32_t saturationValue) {
    uint16_t brightest = 0;
    for (size_t i = 0; i < count; ++i) {
        if (pixels[i] < saturationValue) brightest = std::max(brightest, pixels[i]);
    }
    for (size_t i = 0; i < count; ++i) pixels[i] = std::min(pixels[i], brightest);
}

#if VASTRELLINE_VECTOR_FORMS

// Becomes part of each function below, so that the compiler makes vectors of that function's width. With its
// top bit inverted a pixel orders as a number with a sign, the only one that every x86-64 has vectors for.
//
// The brightest unsaturated pixel is the one that is nearest below the limit. Distances from the limit wrap
// above it, and so are larger there than any below: the least one needs no test of what is saturated.
[[gnu::always_inline]] inline void CapInLanes(uint16_t* pixels, size_t count, int32_t saturationValue) {
    constexpr uint16_t kTopBit = 0x8000;
    constexpr int32_t kBeyondPixels = 0x10000;
    if (saturationValue >= kBeyondPixels) return;
    if (saturationValue <= 0) {
        std::fill_n(pixels, count, uint16_t{0});
        return;
    }
    const auto limit = static_cast<uint16_t>(saturationValue - 1);
    auto nearest = static_cast<int16_t>(0xFFFF ^ kTopBit);
    auto largest = static_cast<int16_t>(kTopBit);
    for (size_t i = 0; i < count; ++i) {
        const auto distance = static_cast<int16_t>(static_cast<uint16_t>(limit - pixels[i]) ^ kTopBit);
        const auto pixel = static_cast<int16_t>(pixels[i] ^ kTopBit);
        nearest = distance < nearest ? distance : nearest;
        largest = pixel > largest ? pixel : largest;
    }
    if (static_cast<uint16_t>(largest ^ kTopBit) <= limit) return;
    const auto leastDistance = static_cast<uint16_t>(nearest ^ kTopBit);
    const auto brightest = static_cast<uint16_t>(leastDistance <= limit ? limit - leastDistance : 0);
    const auto cap = static_cast<int16_t>(brightest ^ kTopBit);
    for (size_t i = 0; i < count; ++i) {
        const auto pixel = static_cast<int16_t>(pixels[i] ^ kTopBit);
        pixels[i] = static_cast<uint16_t>((pixel < cap ? pixel : cap) ^ kTopBit);
    }
}

void CapBaseline(uint16_t* pixels, size_t count, int32_t saturationValue) {
    CapInLanes(pixels, count, saturationValue);
}
TARGET_AVX2 void CapAvx2(uint16_t* pixels, size_t count, int32_t saturationValue) {
    CapInLanes(pixels, count, saturationValue);
}
TARGET_AVX512 void CapAvx512(uint16_t* pixels, size_t count, int32_t saturationValue) {
    CapInLanes(pixels, count, saturationValue);
}

#endif

constexpr SaturationCapVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, CapScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, CapBaseline},
    {"avx2", InstructionSet::Avx2, CapAvx2},
    {"avx512", InstructionSet::Avx512, CapAvx512},
#endif
};

}  // namespace

std::span<const SaturationCapVariant> SaturationCapVariants() { return AllowedVariants(kVariants); }

void CapSaturation(uint16_t* pixels, int32_t width, int32_t height, int32_t saturationValue) {
    const FrameView<uint16_t> frame(pixels, width, height);
    FastestOf(SaturationCapVariants()).run(frame.begin(), frame.Count(), saturationValue);
}

}  // namespace vastrelline
