#include "stages/gaussian/GaussianPasses.h"

#include <algorithm>
#include <vector>

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
    // So many passes run without a look at what they changed: no usual number of passes pays for the copy.
    constexpr int32_t kUnwatchedPasses = 8;
    const FrameView<uint16_t> frame(pixels, width, height);
    std::vector<uint16_t> before;
    for (int32_t pass = 0; pass < params.GAUSSIAN_REPEAT; ++pass) {
        if (pass < kUnwatchedPasses) {
            SmoothOnce(frame, maxValue, params);
            continue;
        }
        // A pass depends on the frame alone, so after one that changes nothing no other changes anything.
        // Without this a key of 2147483647 would hang the host.
        before.assign(frame.begin(), frame.end());
        SmoothOnce(frame, maxValue, params);
        if (std::equal(before.begin(), before.end(), frame.begin())) return;
    }
}

}  // namespace vastrelline
