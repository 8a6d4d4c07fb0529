#include "stages/adaptive_smoothing/LocalDeviation.h"

#include <cstddef>

namespace vastrelline {

namespace {

constexpr DeviationVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, QuantiseDeviationScalar, BlendByLevelScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, QuantiseDeviationBaseline, BlendByLevelBaseline},
    {"avx2", InstructionSet::Avx2, QuantiseDeviationAvx2, BlendByLevelAvx2},
#endif
};

}  // namespace

std::span<const DeviationVariant> DeviationVariants() { return AllowedVariants(kVariants); }

void QuantiseDeviation(const DeviationCall& call) {
    if (call.radius == kDeviationRadius) {
        DeviationVariants().back().quantise(call);
    } else {
        QuantiseDeviationScalar(call);
    }
}

void BlendByLevel(const BlendCall& call) { DeviationVariants().back().blend(call); }

}  // namespace vastrelline
