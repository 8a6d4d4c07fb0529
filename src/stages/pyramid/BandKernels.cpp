// SPDX-License-Identifier: Apache-2.0
#include "stages/pyramid/BandKernels.h"

namespace vastrelline {

namespace {

constexpr BandVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, &kBandKernelsScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, &kBandKernelsBaseline},
    {"avx2", InstructionSet::Avx2, &kBandKernelsAvx2},
    {"avx512", InstructionSet::Avx512, &kBandKernelsAvx512},
#endif
};

}  // namespace

std::span<const BandVariant> BandVariants() { return AllowedVariants(kVariants); }

}  // namespace vastrelline
