// SPDX-License-Identifier: Apache-2.0
#include "operators/resample/ResizeSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#define TARGET TARGET_BASELINE

namespace vastrelline {

namespace {

TARGET void BlendRow(const ResizeBlend& blend, uint16_t* result) {
    for (size_t x = 0; x < blend.count; ++x) result[x] = BlendFourPixels(blend, x);
}

TARGET void BlendInRow(const ResizeBlend& blend, uint16_t* result) {
    for (size_t x = 0; x < blend.count; ++x) result[x] = BlendTwoPixels(blend, x);
}

#include "operators/resample/ResizeVector.inl"

}  // namespace

void ResizeFrameBaseline(const ResizeCall& call) { RunResizeSchedule(call, kKernels); }

}  // namespace vastrelline

#endif
