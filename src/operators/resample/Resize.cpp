#include "operators/resample/Resize.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "operators/separable/GaussPlan.h"
#include "operators/separable/SeparableFilter.h"
#include "pixels/Border.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

constexpr ResizeVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, ResizeFrameScalar},
#if VASTRELLINE_X86
    {"baseline", InstructionSet::Baseline, ResizeFrameBaseline},
    {"avx2", InstructionSet::Avx2, ResizeFrameAvx2},
#endif
};

// What must be added to a side so that it becomes a whole multiple of the
// factor.
int32_t PadToMultiple(int32_t side, int32_t factor) {
    const int32_t rest = side % factor;
    return rest == 0 ? 0 : factor - rest;
}

// The frame, extended to whole multiples of the factor and reduced by it; none if it would be too large.
std::unique_ptr<CImageM> ShrinkByFactor(const uint16_t* source, int32_t width, int32_t height,
                                        int32_t factor) {
    constexpr int64_t kLargestExtended = int64_t{1} << 29;
    const int32_t padWidth = PadToMultiple(width, factor);
    const int32_t padHeight = PadToMultiple(height, factor);
    if ((int64_t{width} + padWidth) * (int64_t{height} + padHeight) >= kLargestExtended) return nullptr;
    if (padWidth == 0 && padHeight == 0) return ResizeBilinear(source, width, height, 1.0 / factor);
    const std::optional<std::vector<uint16_t>> padded =
        ExtendImage(source, width, height, padWidth, padHeight, BorderMode::BorderTrailing);
    return ResizeBilinear(padded->data(), width + padWidth, height + padHeight, 1.0 / factor);
}

// Enlarges a reduced frame and writes as much of it as the buffer takes.
void EnlargeInto(uint16_t* buffer, int32_t width, int32_t height, CImageM& reduced, int32_t factor) {
    const double scale = factor;
    const int64_t enlargedWidth = int64_t{reduced.Width()} * factor;
    const int64_t enlargedHeight = int64_t{reduced.Height()} * factor;
    // The rows that double write whole pairs; any other scale draws as much as the buffer takes.
    const bool isExact = enlargedWidth == width && enlargedHeight == height;
    const bool covers = enlargedWidth >= width && enlargedHeight >= height;
    if (isExact || (factor != 2 && covers)) {
        const ResizeCall call{
            reduced.Pixels16(), reduced.Width(), reduced.Height(), scale, buffer, width, height};
        return ResizeVariants().back().run(call);
    }
    const std::unique_ptr<CImageM> expanded =
        ResizeBilinear(reduced.Pixels16(), reduced.Width(), reduced.Height(), scale);
    // Where a reduced side was truncated, the enlarged frame does not cover all of the buffer.
    const int32_t rows = std::min(height, expanded->Height());
    const int32_t columns = std::min(width, expanded->Width());
    const uint16_t* from = expanded->Pixels16();
    for (int32_t y = 0; y < rows; ++y) {
        std::copy_n(from + static_cast<size_t>(y) * static_cast<size_t>(expanded->Width()), columns,
                    buffer + static_cast<size_t>(y) * static_cast<size_t>(width));
    }
}

}  // namespace

std::span<const ResizeVariant> ResizeVariants() { return AllowedVariants(kVariants); }

std::unique_ptr<CImageM> ResizeBilinear(const uint16_t* source, int32_t width, int32_t height, double scale) {
    const int32_t resultHeight = TruncateToInt32(height * scale);
    const int32_t resultWidth = TruncateToInt32(width * scale);
    auto result = std::make_unique<CImageM>(L"");
    result->Set(nullptr, resultWidth, resultHeight, 16, 14, 0, 0, 1, 0, 0, 1.0);
    if (resultWidth > 0 && resultHeight > 0) {
        ResizeVariants().back().run(
            {source, width, height, scale, result->Pixels16(), resultWidth, resultHeight});
    }
    return result;
}

void ReducedScaleGaussian(uint16_t* buffer, int32_t width, int32_t height, int32_t maxValue, double sigma,
                          int32_t factor) {
    if (factor < 1 || width <= 0 || height <= 0) return;
    // At the scale 1 the way down and up changes nothing.
    if (factor == 1) return GaussFilterReplicate(buffer, width, height, maxValue, sigma);
    const std::unique_ptr<CImageM> reduced = ShrinkByFactor(buffer, width, height, factor);
    if (reduced == nullptr) return;
    const double reducedSigma = sigma / factor;
    const std::optional<GaussPlan> plan =
        PlanGaussReplicate(reduced->Width(), reduced->Height(), reducedSigma);
    if (!plan) return;
    FilterFrame(
        {reduced->Pixels16(), reduced->Width(), reduced->Height(), maxValue, plan->kernel, plan->edges});
    EnlargeInto(buffer, width, height, *reduced, factor);
}

}  // namespace vastrelline
