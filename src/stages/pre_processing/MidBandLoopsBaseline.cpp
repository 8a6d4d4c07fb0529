// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_processing/MidBandLoops.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_BASELINE

namespace vastrelline {

namespace {

#include "pixels/PixelLanesBaseline.inl"
#include "stages/pre_processing/MidBandLoopsVector.inl"

}  // namespace

const MidBandLoops kMidBandLoopsBaseline = {FindFloor, Subtract, Boost, AddFine, Finish};

}  // namespace vastrelline

#endif
