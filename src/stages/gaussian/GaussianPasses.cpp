// SPDX-License-Identifier: Apache-2.0
#include "stages/gaussian/GaussianPasses.h"

#include "operators/repeat/RepeatedPasses.h"
#include "operators/resample/Resize.h"
#include "operators/separable/SeparableFilter.h"
#include "pixels/FrameView.h"

namespace vastrelline {

namespace {

void SmoothOnce(const FrameView<uint16_t>& frame, int32_t maxValue, const GaussianParams& params) {
    const double sigma = params.GAUSSIAN_SIZE;
    if (params.GAUSSIAN_ReduceTimeRatio != 1) {
        ReducedScaleGaussian(frame.begin(), frame.Width(), frame.Height(), maxValue, sigma,
                             params.GAUSSIAN_ReduceTimeRatio);
    } else if (params.GAUSSIAN_ProtectOutline != 0) {
        GaussFilterReplicate(frame.begin(), frame.Width(), frame.Height(), maxValue, sigma);
    } else {
        GaussFilterWrap(frame.begin(), frame.Width(), frame.Height(), maxValue, sigma);
    }
}

}  // namespace

void SmoothGaussian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                    const GaussianParams& params) {
    const FrameView<uint16_t> frame(pixels, width, height);
    RepeatPasses(frame, params.GAUSSIAN_REPEAT, [&] { SmoothOnce(frame, maxValue, params); });
}

}  // namespace vastrelline
