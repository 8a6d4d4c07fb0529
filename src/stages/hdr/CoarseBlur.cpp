// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/CoarseBlur.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "pixels/ScratchVector.h"

namespace vastrelline {

namespace {

// Rows become columns. In squares that fit into the nearest cache on both sides.
ScratchVector<float> Transpose(const float* rows, int32_t width, int32_t height) {
    constexpr int32_t kSide = 32;
    ScratchVector<float> columns(static_cast<size_t>(width) * static_cast<size_t>(height));
    for (int32_t top = 0; top < height; top += kSide) {
        for (int32_t left = 0; left < width; left += kSide) {
            const int32_t right = std::min(left + kSide, width);
            const int32_t bottom = std::min(top + kSide, height);
            for (int32_t x = left; x < right; ++x) {
                float* out = columns.data() + static_cast<size_t>(x) * static_cast<size_t>(height);
                const float* in = rows + x + static_cast<size_t>(top) * static_cast<size_t>(width);
                for (int32_t y = top; y < bottom; ++y, in += width) out[y] = *in;
            }
        }
    }
    return columns;
}

}  // namespace

// The steps along the rows come where the rows are fewest: after the first step along the columns, if there
// are several.
CoarseBlur::CoarseBlur(const float* image, int32_t width, int32_t height, double sigma,
                       const FusionKernels& kernels)
    : kernels_(kernels), width_(CountBlurredPlaces(width)) {
    std::vector<BlurStep> steps = MakeBlurSteps(height, sigma);
    const bool isDirect = steps.size() == 1;
    ScratchVector<float> few;
    if (!isDirect) few = ApplyStep(steps.front(), image, width, kernels);
    const int32_t fewRows = isDirect ? height : steps.front().NewRows();
    few = Transpose(isDirect ? image : few.data(), width, fewRows);
    for (const BlurStep& step : MakeBlurSteps(width, sigma))
        few = ApplyStep(step, few.data(), fewRows, kernels);
    rows_ = Transpose(few.data(), fewRows, width_);
    for (size_t i = 1; i + 1 < steps.size(); ++i) rows_ = ApplyStep(steps[i], rows_.data(), width_, kernels);
    lastStep_ = std::move(steps.back());
}

void CoarseBlur::MakeRow(int32_t row, float* out) {
    MakeStepRow(lastStep_, rows_.data(), width_, row, seen_, kernels_, out);
}

}  // namespace vastrelline
