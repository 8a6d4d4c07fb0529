#include "detail/BandKernels.h"

#include <iterator>

namespace vastrelline {

std::span<const BandKernels> BandVariants() {
    static const BandKernels variants[] = {
        ScalarBandKernels(),
#if VASTRELLINE_X86
        BaselineBandKernels(),
        Avx2BandKernels(),
#endif
    };
    const InstructionSet allowed = AllowedInstructionSet();
    size_t count = 0;
    while (count < std::size(variants) && variants[count].needs <= allowed) ++count;
    return {variants, count};
}

}  // namespace vastrelline
