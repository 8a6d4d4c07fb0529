// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/FusionKernels.h"

namespace vastrelline {

namespace {

constexpr FusionVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, &kFusionKernelsScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, &kFusionKernelsBaseline},
    {"avx2", InstructionSet::Avx2, &kFusionKernelsAvx2},
    {"avx512", InstructionSet::Avx512, &kFusionKernelsAvx512},
#endif
};

}  // namespace

std::span<const FusionVariant> FusionVariants() { return AllowedVariants(kVariants); }

}  // namespace vastrelline
