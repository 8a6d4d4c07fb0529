// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_smoothing/LocalDeviationSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_AVX512

namespace vastrelline {

namespace {

#include "pixels/PixelLanesAvx512.inl"
#include "stages/adaptive_smoothing/LocalDeviationVector.inl"

}  // namespace

void QuantiseDeviationAvx512(const DeviationCall& call) { RunDeviationSchedule(call, kKernels); }

void BlendByLevelAvx512(const BlendCall& call) { Blend(call); }

}  // namespace vastrelline

#endif
