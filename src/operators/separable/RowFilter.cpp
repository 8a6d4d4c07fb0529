// SPDX-License-Identifier: Apache-2.0
#include "operators/separable/RowFilter.h"

#include <cstddef>
#include <optional>

#include "operators/separable/GaussPlan.h"

namespace vastrelline {

namespace {

constexpr RowFilterVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, FilterRowsScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, FilterRowsBaseline},
    {"avx2", InstructionSet::Avx2, FilterRowsAvx2},
    {"avx512", InstructionSet::Avx512, FilterRowsAvx512},
#endif
};

}  // namespace

std::span<const RowFilterVariant> RowFilterVariants() { return AllowedVariants(kVariants); }

void FilterRows(const RowFilterCall& call) {
    if (call.width <= 0 || call.height <= 0 || call.kernel.empty()) return;
    FastestOf(RowFilterVariants()).run(call);
}

void GaussRowsReplicate(int32_t width, int32_t height, int32_t maxValue, double sigma,
                        const RowSource& sourceRow, const RowSink& takeRow) {
    const std::optional<GaussPlan> plan = PlanGaussReplicate(width, height, sigma);
    if (plan) {
        FilterRows({width, height, maxValue, plan->kernel, plan->edges, sourceRow, takeRow});
        return;
    }
    for (int32_t y = 0; y < height; ++y) takeRow(y, sourceRow(y));
}

}  // namespace vastrelline
