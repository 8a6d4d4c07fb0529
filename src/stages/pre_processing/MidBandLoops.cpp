// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_processing/MidBandLoops.h"

namespace vastrelline {

namespace {

constexpr MidBandVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, &kMidBandLoopsScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, &kMidBandLoopsBaseline},
    {"avx2", InstructionSet::Avx2, &kMidBandLoopsAvx2},
    {"avx512", InstructionSet::Avx512, &kMidBandLoopsAvx512},
#endif
};

}  // namespace

std::span<const MidBandVariant> MidBandVariants() { return AllowedVariants(kVariants); }

}  // namespace vastrelline
