// SPDX-License-Identifier: Apache-2.0
#include "operators/separable/HalvingFilter.h"

#include <cstddef>
#include <optional>

#include "operators/separable/GaussPlan.h"

namespace vastrelline {

namespace {

constexpr HalvingVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, FilterAndHalveScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, FilterAndHalveBaseline},
    {"avx2", InstructionSet::Avx2, FilterAndHalveAvx2},
    {"avx512", InstructionSet::Avx512, FilterAndHalveAvx512},
#endif
};

}  // namespace

std::span<const HalvingVariant> HalvingVariants() { return AllowedVariants(kVariants); }

void FilterAndHalve(const HalvingCall& call) {
    if (call.width < 2 || call.height < 2 || call.kernel.empty()) return;
    FastestOf(HalvingVariants()).run(call);
}

void GaussHalveReplicate(const uint16_t* source, int32_t width, int32_t height, int32_t maxValue,
                         double sigma, uint16_t* result) {
    const std::optional<GaussPlan> plan = PlanGaussReplicate(width, height, sigma);
    if (plan) {
        FilterAndHalve({source, width, height, maxValue, plan->kernel, plan->edges, result});
        return;
    }
    for (int32_t y = 0; y < height / 2; ++y) {
        const uint16_t* row = source + 2 * static_cast<size_t>(y) * static_cast<size_t>(width);
        for (size_t x = 0; x < static_cast<size_t>(width / 2); ++x) *result++ = row[2 * x];
    }
}

}  // namespace vastrelline
