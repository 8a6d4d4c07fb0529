#include "contrast/FusionKernels.h"

#include <cstddef>
#include <iterator>

namespace vastrelline {

std::span<const FusionVariant> FusionVariants() {
    static const FusionVariant variants[] = {
        {"scalar", InstructionSet::Reference, &kFusionKernelsScalar},
#if VASTRELLINE_X86
        {"baseline", InstructionSet::Baseline, &kFusionKernelsBaseline},
        {"avx2", InstructionSet::Avx2, &kFusionKernelsAvx2},
        {"avx512", InstructionSet::Avx512, &kFusionKernelsAvx512},
#endif
    };
    const InstructionSet allowed = AllowedInstructionSet();
    size_t count = 0;
    while (count < std::size(variants) && variants[count].needs <= allowed) ++count;
    return {variants, count};
}

}  // namespace vastrelline
