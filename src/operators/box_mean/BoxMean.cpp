// SPDX-License-Identifier: Apache-2.0
#include "operators/box_mean/BoxMean.h"

#include <algorithm>
#include <cstddef>

namespace vastrelline {

namespace {

constexpr BoxMeanVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, BoxMeanScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, BoxMeanBaseline},
    {"avx2", InstructionSet::Avx2, BoxMeanAvx2},
    {"avx512", InstructionSet::Avx512, BoxMeanAvx512},
#endif
};

}  // namespace

std::span<const BoxMeanVariant> BoxMeanVariants() { return AllowedVariants(kVariants); }

void BoxMean(const uint16_t* source, uint16_t* destination, int32_t width, int32_t height, int32_t radius) {
    if (source == nullptr || destination == nullptr || width <= 0 || height <= 0) return;
    if (radius <= 0) {
        std::copy_n(source, static_cast<size_t>(width) * static_cast<size_t>(height), destination);
        return;
    }
    FastestOf(BoxMeanVariants()).run({source, destination, width, height, radius});
}

void BoxMeanInPlace(uint16_t* buffer, int32_t width, int32_t height, int32_t radius) {
    if (buffer == nullptr || width <= 0 || height <= 0 || radius <= 0) return;
    FastestOf(BoxMeanVariants()).run({buffer, buffer, width, height, radius});
}

}  // namespace vastrelline
