// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_processing/MidBandLoops.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_AVX512

namespace vastrelline {

namespace {

#include "pixels/PixelLanesAvx512.inl"
#include "stages/pre_processing/MidBandLoopsVector.inl"

}  // namespace

const MidBandLoops kMidBandLoopsAvx512 = {FindFloor, Subtract, Boost, AddFine, Finish};

}  // namespace vastrelline

#endif
