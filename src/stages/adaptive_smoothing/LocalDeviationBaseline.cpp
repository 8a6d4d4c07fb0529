// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_smoothing/LocalDeviationSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_BASELINE

namespace vastrelline {

namespace {

#include "pixels/PixelLanesBaseline.inl"
#include "stages/adaptive_smoothing/LocalDeviationVector.inl"

}  // namespace

void QuantiseDeviationBaseline(const DeviationCall& call) { RunDeviationSchedule(call, kKernels); }

void BlendByLevelBaseline(const BlendCall& call) { Blend(call); }

}  // namespace vastrelline

#endif
