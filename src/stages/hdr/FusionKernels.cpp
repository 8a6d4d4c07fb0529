#include "stages/hdr/FusionKernels.h"

#include <cstddef>
#include <iterator>

namespace vastrelline {

std::span<const FusionVariant> FusionVariants() {
    static const FusionVariant variants[] = {
        {"scalar", InstructionSet::Reference, &kFusionKernelsScalar},
#if VASTRELLINE_VECTOR_FORMS
        {"baseline", InstructionSet::Baseline, &kFusionKernelsBaseline},
        {"avx2", InstructionSet::Avx2, &kFusionKernelsAvx2},
        {"avx512", InstructionSet::Avx512, &kFusionKernelsAvx512},
#endif
    };
    return AllowedVariants(variants);
}

}  // namespace vastrelline
