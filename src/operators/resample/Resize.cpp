// SPDX-License-Identifier: Apache-2.0
#include "operators/resample/Resize.h"

#include <algorithm>
#include <optional>

#include "operators/separable/GaussPlan.h"
#include "operators/separable/SeparableFilter.h"
#include "pixels/AllocFrame.h"
#include "pixels/Border.h"
#include "pixels/FrameLimits.h"
#include "pixels/FrameView.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

constexpr ResizeVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, ResizeFrameScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, ResizeFrameBaseline},
    {"avx2", InstructionSet::Avx2, ResizeFrameAvx2},
#endif
};

// What must be added to a side so that it becomes a whole multiple of the factor.
int32_t PadToMultiple(int32_t side, int32_t factor) {
    const int32_t rest = side % factor;
    return rest == 0 ? 0 : factor - rest;
}

// The frame, extended to whole multiples of the factor and reduced by it; none if it would be too large.
std::optional<OwnedFrame> ShrinkByFactor(const uint16_t* source, int32_t width, int32_t height,
                                         int32_t factor) {
    const int32_t padWidth = PadToMultiple(width, factor);
    const int32_t padHeight = PadToMultiple(height, factor);
    if (IsBeyondPixelLimit(width, height, padWidth, padHeight)) return std::nullopt;
    if (padWidth == 0 && padHeight == 0) return ResizeBilinear(source, width, height, 1.0 / factor);
    const std::optional<ScratchVector<uint16_t>> padded =
        ExtendImage(source, width, height, padWidth, padHeight, BorderMode::BorderTrailing);
    return ResizeBilinear(padded->data(), width + padWidth, height + padHeight, 1.0 / factor);
}

// Enlarges a reduced frame and writes as much of it as the buffer takes.
void EnlargeInto(const FrameView<uint16_t>& buffer, const OwnedFrame& reduced, int32_t factor) {
    const double scale = factor;
    const int64_t enlargedWidth = int64_t{reduced.width} * factor;
    const int64_t enlargedHeight = int64_t{reduced.height} * factor;
    // The rows that double write whole pairs; any other scale draws as much as the buffer takes.
    const bool isExact = enlargedWidth == buffer.Width() && enlargedHeight == buffer.Height();
    const bool covers = enlargedWidth >= buffer.Width() && enlargedHeight >= buffer.Height();
    if (isExact || (factor != 2 && covers)) {
        return FastestOf(ResizeVariants())
            .run({reduced.pixels.data(), reduced.width, reduced.height, scale, buffer.begin(), buffer.Width(),
                  buffer.Height()});
    }
    const OwnedFrame enlarged = ResizeBilinear(reduced.pixels.data(), reduced.width, reduced.height, scale);
    // Where a reduced side was truncated, the enlarged frame does not cover all of the buffer.
    const int32_t rows = std::min(buffer.Height(), enlarged.height);
    const int32_t columns = std::min(buffer.Width(), enlarged.width);
    for (int32_t y = 0; y < rows; ++y) std::copy_n(enlarged.View().Row(y), columns, buffer.Row(y));
}

}  // namespace

std::span<const ResizeVariant> ResizeVariants() { return AllowedVariants(kVariants); }

OwnedFrame ResizeBilinear(const uint16_t* source, int32_t width, int32_t height, double scale) {
    const int32_t resultWidth = TruncateToInt32(width * scale);
    const int32_t resultHeight = TruncateToInt32(height * scale);
    OwnedFrame result{resultWidth, resultHeight, AllocFrame<uint16_t>(resultWidth, resultHeight)};
    if (!result.pixels.empty()) {
        FastestOf(ResizeVariants())
            .run({source, width, height, scale, result.pixels.data(), resultWidth, resultHeight});
    }
    return result;
}

void ReducedScaleGaussian(uint16_t* buffer, int32_t width, int32_t height, int32_t maxValue, double sigma,
                          int32_t factor) {
    if (factor < 1 || width <= 0 || height <= 0) return;
    // At the scale 1 the way down and up changes nothing.
    if (factor == 1) return GaussFilterReplicate(buffer, width, height, maxValue, sigma);
    std::optional<OwnedFrame> reduced = ShrinkByFactor(buffer, width, height, factor);
    if (!reduced) return;
    const double reducedSigma = sigma / factor;
    const std::optional<GaussPlan> plan = PlanGaussReplicate(reduced->width, reduced->height, reducedSigma);
    if (!plan) return;
    FilterFrame(
        {reduced->pixels.data(), reduced->width, reduced->height, maxValue, plan->kernel, plan->edges});
    EnlargeInto({buffer, width, height}, *reduced, factor);
}

}  // namespace vastrelline
