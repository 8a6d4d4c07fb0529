// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "pixels/ScratchVector.h"
#include "platform/InstructionSet.h"
#include "platform/Variant.h"
#include "stages/pre_contrast/PreContrastParams.h"

namespace vastrelline {

// Raises the large-scale contrast of a frame, in place: a broad unsharp mask. Each pixel is moved away from
// the smoothed frame by PRECONTRAST_RATIO times its distance; below 1 that softens.
//
// maxValue   the largest value stored
// params     with PRECONTRAST_RESCALE above 1 the smoothing runs at reduced resolution. A mask or factor that
//            the smoothing cannot run with leaves the smoothed frame equal to the frame
// Edges      the edge pixels are repeated, but for a mask without reach: see GaussFilterReplicate
// Returns    the smoothed frame, for those who want to look at it
ScratchVector<uint16_t> ApplyPreContrast(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                                         const PreContrastParams& params);

// One amplification of what a frame has beyond its smoothed copy.
struct AmplifyCall {
    uint16_t* image;           // count pixels, changed in place
    const uint16_t* smoothed;  // count pixels; must not overlap the image
    size_t count;
    int32_t maxValue;
    double ratio;
};

// A form of the amplification.
using AmplifyVariant = Variant<void (*)(const AmplifyCall& call)>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const AmplifyVariant> AmplifyVariants();

// The definition: smoothed + (image - smoothed) * ratio in doubles, truncated toward zero, raised to 0, then
// lowered to maxValue.
void AmplifyDifferenceScalar(const AmplifyCall& call);

#if VASTRELLINE_VECTOR_FORMS
void AmplifyDifferenceBaseline(const AmplifyCall& call);
void AmplifyDifferenceAvx2(const AmplifyCall& call);
void AmplifyDifferenceAvx512(const AmplifyCall& call);
#endif

}  // namespace vastrelline
