// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_processing/MidBandLoops.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_AVX2

namespace vastrelline {

namespace {

#include "pixels/PixelLanesAvx2.inl"
#include "stages/pre_processing/MidBandLoopsVector.inl"

}  // namespace

const MidBandLoops kMidBandLoopsAvx2 = {FindFloor, Subtract, Boost, AddFine, Finish};

}  // namespace vastrelline

#endif
