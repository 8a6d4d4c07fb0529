// SPDX-License-Identifier: Apache-2.0
#include "stages/pyramid/BandKernels.h"

#if VASTRELLINE_VECTOR_FORMS

#define TARGET TARGET_AVX512

namespace vastrelline {

namespace {

#include "stages/pyramid/BandKernelsVector.inl"

}  // namespace

const BandKernels kBandKernelsAvx512 = {Subtract, FindRange, CountValues, Remap, Add};

}  // namespace vastrelline

#endif
