// SPDX-License-Identifier: Apache-2.0
#include "operators/separable/SeparableFilter.h"

#include <optional>

#include "operators/separable/GaussPlan.h"

namespace vastrelline {

namespace {

void RunPlan(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
             const std::optional<GaussPlan>& plan) {
    if (plan) FilterFrame({pixels, width, height, maxValue, plan->kernel, plan->edges});
}

constexpr FilterVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, FilterFrameScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, FilterFrameBaseline},
    {"avx2", InstructionSet::Avx2, FilterFrameAvx2},
    {"avx512", InstructionSet::Avx512, FilterFrameAvx512},
#endif
};

}  // namespace

std::span<const FilterVariant> FilterVariants() { return AllowedVariants(kVariants); }

void FilterFrame(const FilterCall& call) {
    if (call.width <= 0 || call.height <= 0 || call.kernel.empty()) return;
    FastestOf(FilterVariants()).run(call);
}

void SeparableFilter(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, const double* kernel,
                     int32_t size) {
    if (size < 1) return;
    FilterFrame({pixels, width, height, maxValue, {kernel, static_cast<size_t>(size)}, EdgeRule::Wrap});
}

void GaussFilterWrap(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, double sigma) {
    RunPlan(pixels, width, height, maxValue, PlanGaussWrap(width, height, sigma));
}

void GaussFilterReplicate(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, double sigma) {
    RunPlan(pixels, width, height, maxValue, PlanGaussReplicate(width, height, sigma));
}

}  // namespace vastrelline
