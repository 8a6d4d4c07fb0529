// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_smoothing/LocalDeviation.h"

#include <cstddef>

namespace vastrelline {

namespace {

constexpr DeviationLoops kScalar = {QuantiseDeviationScalar, BlendByLevelScalar};
#if VASTRELLINE_VECTOR_FORMS
constexpr DeviationLoops kBaseline = {QuantiseDeviationBaseline, BlendByLevelBaseline};
constexpr DeviationLoops kAvx2 = {QuantiseDeviationAvx2, BlendByLevelAvx2};
constexpr DeviationLoops kAvx512 = {QuantiseDeviationAvx512, BlendByLevelAvx512};
#endif

constexpr DeviationVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, &kScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, &kBaseline},
    {"avx2", InstructionSet::Avx2, &kAvx2},
    {"avx512", InstructionSet::Avx512, &kAvx512},
#endif
};

}  // namespace

std::span<const DeviationVariant> DeviationVariants() { return AllowedVariants(kVariants); }

void QuantiseDeviation(const DeviationCall& call) {
    if (call.radius == kDeviationRadius) {
        FastestOf(DeviationVariants()).run->quantise(call);
    } else {
        QuantiseDeviationScalar(call);
    }
}

void BlendByLevel(const BlendCall& call) { FastestOf(DeviationVariants()).run->blend(call); }

}  // namespace vastrelline
