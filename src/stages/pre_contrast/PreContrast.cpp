// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_contrast/PreContrast.h"

#include "operators/resample/Resize.h"
#include "operators/separable/SeparableFilter.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

constexpr AmplifyVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, AmplifyDifferenceScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, AmplifyDifferenceBaseline},
    {"avx2", InstructionSet::Avx2, AmplifyDifferenceAvx2},
    {"avx512", InstructionSet::Avx512, AmplifyDifferenceAvx512},
#endif
};

}  // namespace

std::span<const AmplifyVariant> AmplifyVariants() { return AllowedVariants(kVariants); }

ScratchVector<uint16_t> ApplyPreContrast(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                                         const PreContrastParams& params) {
    const FrameView<uint16_t> frame(pixels, width, height);
    ScratchVector<uint16_t> smoothed(frame.begin(), frame.end());
    if (params.PRECONTRAST_RESCALE > 1.0) {
        ReducedScaleGaussian(smoothed.data(), width, height, maxValue, params.PRECONTRAST_MASK,
                             TruncateToInt32(params.PRECONTRAST_RESCALE));
    } else {
        GaussFilterReplicate(smoothed.data(), width, height, maxValue, params.PRECONTRAST_MASK);
    }
    FastestOf(AmplifyVariants())
        .run({pixels, smoothed.data(), frame.Count(), maxValue, params.PRECONTRAST_RATIO});
    return smoothed;
}

}  // namespace vastrelline
