#include "stages/pyramid/BandKernels.h"

#include <iterator>

namespace vastrelline {

std::span<const BandKernels> BandVariants() {
    static const BandKernels variants[] = {
        ScalarBandKernels(),
#if VASTRELLINE_VECTOR_FORMS
        BaselineBandKernels(),
        Avx2BandKernels(),
#endif
    };
    return AllowedVariants(variants);
}

}  // namespace vastrelline
