// SPDX-License-Identifier: Apache-2.0
#include "stages/pyramid/BandKernels.h"

#if VASTRELLINE_VECTOR_FORMS

#define TARGET TARGET_BASELINE

namespace vastrelline {

namespace {

#include "stages/pyramid/BandKernelsVector.inl"

}  // namespace

const BandKernels kBandKernelsBaseline = {Subtract, FindRange, CountValues, Remap, Add};

}  // namespace vastrelline

#endif
