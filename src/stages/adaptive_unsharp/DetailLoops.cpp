// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/DetailLoops.h"

namespace vastrelline {

namespace {

constexpr DetailVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, &kDetailLoopsScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, &kDetailLoopsBaseline},
    {"avx2", InstructionSet::Avx2, &kDetailLoopsAvx2},
    {"avx512", InstructionSet::Avx512, &kDetailLoopsAvx512},
#endif
};

}  // namespace

std::span<const DetailVariant> DetailVariants() { return AllowedVariants(kVariants); }

}  // namespace vastrelline
