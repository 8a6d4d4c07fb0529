// SPDX-License-Identifier: Apache-2.0
#include "operators/histogram/PixelRange.h"

#include <algorithm>

#include "pixels/FrameView.h"

namespace vastrelline {

namespace {

// The definition.
PixelRange FindScalar(const uint16_t* pixels, size_t count) {
    PixelRange range{0x10000, 0};
    for (size_t i = 0; i < count; ++i) {
        range.smallest = std::min<int32_t>(range.smallest, pixels[i]);
        range.largest = std::max<int32_t>(range.largest, pixels[i]);
    }
    return range;
}

#if VASTRELLINE_VECTOR_FORMS

// Becomes part of each function below, so that the compiler makes vectors of that function's width. With its
// top bit inverted a pixel orders as a number with a sign, the only one that every x86-64 has vectors for.
[[gnu::always_inline]] inline PixelRange FindInLanes(const uint16_t* pixels, size_t count) {
    constexpr uint16_t kTopBit = 0x8000;
    if (count == 0) return FindScalar(pixels, count);
    auto smallest = static_cast<int16_t>(pixels[0] ^ kTopBit);
    int16_t largest = smallest;
    for (size_t i = 0; i < count; ++i) {
        const auto pixel = static_cast<int16_t>(pixels[i] ^ kTopBit);
        smallest = pixel < smallest ? pixel : smallest;
        largest = pixel > largest ? pixel : largest;
    }
    return {static_cast<uint16_t>(smallest) ^ kTopBit, static_cast<uint16_t>(largest) ^ kTopBit};
}

PixelRange FindBaseline(const uint16_t* pixels, size_t count) { return FindInLanes(pixels, count); }
TARGET_AVX2 PixelRange FindAvx2(const uint16_t* pixels, size_t count) { return FindInLanes(pixels, count); }
TARGET_AVX512 PixelRange FindAvx512(const uint16_t* pixels, size_t count) {
    return FindInLanes(pixels, count);
}

#endif

constexpr PixelRangeVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, FindScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, FindBaseline},
    {"avx2", InstructionSet::Avx2, FindAvx2},
    {"avx512", InstructionSet::Avx512, FindAvx512},
#endif
};

}  // namespace

std::span<const PixelRangeVariant> PixelRangeVariants() { return AllowedVariants(kVariants); }

PixelRange FindPixelRange(const uint16_t* pixels, int32_t width, int32_t height) {
    const FrameView frame(pixels, width, height);
    return FastestOf(PixelRangeVariants()).run(frame.begin(), frame.Count());
}

int32_t MaxPixel(const uint16_t* pixels, int32_t width, int32_t height) {
    return FindPixelRange(pixels, width, height).largest;
}

int32_t MinPixel(const uint16_t* pixels, int32_t width, int32_t height) {
    return FindPixelRange(pixels, width, height).smallest;
}

}  // namespace vastrelline
