// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/LayerFusion.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

#include "operators/histogram/PixelRange.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
#include "pixels/Truncate.h"
#include "stages/hdr/BlurStep.h"
#include "stages/hdr/CoarseBlur.h"
#include "stages/hdr/FineBlur.h"
#include "stages/hdr/FusionKernels.h"
#include "stages/hdr/FusionTables.h"
#include "stages/hdr/FusionWeights.h"
#include "stages/hdr/SpectrumEdges.h"

namespace vastrelline {

namespace {

FusionImage MakeFusionImage(const uint16_t* pixels, int32_t width, int32_t height) {
    const auto [smallest, largest] = FindPixelRange(pixels, width, height);
    return {pixels, smallest, largest - smallest};
}

// The sum of both layers, and the pixels that come of it.
class LayerSums {
public:
    LayerSums(const FusionImage& normal, const FusionImage& hed, int32_t width, int32_t height,
              const FusionWeights& weights, const FusionKernels& kernels)
        : normal_(normal.pixels, width, height),
          hed_(hed.pixels, width, height),
          kernels_(kernels),
          mix_{normal.smallest, hed.smallest, static_cast<float>(weights.normal),
               static_cast<float>(weights.hed)},
          sums_(normal_.Count()) {
        SumSharpened(normal, hed, weights);
        if (width % 2 != 0 || height % 2 != 0) SumEdges(weights);
    }

    // `stretch` knows the range of the result; that of the sums is found here.
    void StretchInto(uint16_t* result, FusionStretch stretch) const {
        double lowest = range_.lowest;
        double highest = range_.highest;
        const int32_t width = normal_.Width();
        const int32_t height = normal_.Height();
        // The last row has no say in the range.
        for (size_t y = 0; y + 1 < lastColumn_.size(); ++y) {
            lowest = std::min(lowest, lastColumn_[y]);
            highest = std::max(highest, lastColumn_[y]);
        }
        const double shift = lowest < 0 ? -lowest : 0;
        stretch.largest = highest + shift;
        const FrameView<uint16_t> out(result, width, height);
        for (int32_t y = 0; y < height; ++y) {
            const bool isLast = y == height - 1;
            stretch.shift = isLast ? 0 : shift;
            if (isLast && !lastRow_.empty()) {
                for (int32_t x = 0; x < width; ++x) {
                    out.Row(y)[x] = StretchPixel(lastRow_[static_cast<size_t>(x)], stretch);
                }
                continue;
            }
            kernels_.stretchRow(SumRow(y), stretch, width, out.Row(y));
            if (!lastColumn_.empty()) {
                out.Row(y)[width - 1] = StretchPixel(lastColumn_[static_cast<size_t>(y)], stretch);
            }
        }
    }

private:
    void SumSharpened(const FusionImage& normal, const FusionImage& hed, const FusionWeights& weights) {
        const int32_t width = normal_.Width();
        const int32_t height = normal_.Height();
        // Until they are known, the sums' place serves the mix that the coarse layer blurs.
        const FusionMix coarseMix = {normal.smallest, hed.smallest, static_cast<float>(weights.coarseNormal),
                                     static_cast<float>(weights.coarseHed)};
        for (int32_t y = 0; y < height; ++y) {
            kernels_.mixRows(normal_.Row(y), hed_.Row(y), coarseMix, width, SumRow(y));
        }
        CoarseBlur coarse(sums_.data(), width, height, weights.coarseSigma, kernels_);
        FineBlur fine(normal_, normal.smallest, weights.fineSigma, weights.fineNormal, kernels_);
        FusionRange lastRowsRange = range_;
        for (int32_t y = 0; y < CountBlurredPlaces(height); ++y) {
            coarse.MakeRow(y, SumRow(y));
            kernels_.sumLayers(normal_.Row(y), hed_.Row(y), mix_, fine.MakeRow(y), CountBlurredPlaces(width),
                               SumRow(y), y == height - 1 ? lastRowsRange : range_);
        }
    }

    void SumEdges(const FusionWeights& weights) {
        const int32_t width = normal_.Width();
        const int32_t height = normal_.Height();
        const SpectrumEdges edges =
            MakeSpectrumEdges(normal_.begin(), hed_.begin(), width, height, weights, kernels_);
        const auto sharpened = [&](int32_t x, int32_t y, double edge) {
            return (normal_.Row(y)[x] - mix_.firstOffset) * weights.normal +
                   (hed_.Row(y)[x] - mix_.secondOffset) * weights.hed - edge;
        };
        for (size_t x = 0; x < edges.lastRow.size(); ++x) {
            lastRow_.push_back(sharpened(static_cast<int32_t>(x), height - 1, edges.lastRow[x]));
        }
        for (size_t y = 0; y < edges.lastColumn.size(); ++y) {
            lastColumn_.push_back(sharpened(width - 1, static_cast<int32_t>(y), edges.lastColumn[y]));
        }
    }

    float* SumRow(int32_t y) {
        return sums_.data() + static_cast<size_t>(y) * static_cast<size_t>(normal_.Width());
    }
    const float* SumRow(int32_t y) const {
        return sums_.data() + static_cast<size_t>(y) * static_cast<size_t>(normal_.Width());
    }

    FrameView<const uint16_t> normal_;
    FrameView<const uint16_t> hed_;
    const FusionKernels& kernels_;
    FusionMix mix_;
    ScratchVector<float> sums_;
    // Of odd sizes, where the sums may be so large that all others differ in their last bits only.
    std::vector<double> lastRow_;
    std::vector<double> lastColumn_;
    FusionRange range_ = {std::numeric_limits<float>::max(), std::numeric_limits<float>::lowest()};
};

}  // namespace

int32_t FuseLayers(uint16_t* normalImage, const uint16_t* hedImage, int32_t width, int32_t height,
                   int32_t min, int32_t max, int32_t edgeMax, int32_t edgeOffset, float maxLambda,
                   float wfSlope, float alphaNorm, float alphaHe, int32_t layerStep) {
    constexpr int32_t kRefused = 0;
    constexpr int32_t kFused = 1;
    if (normalImage == nullptr || hedImage == nullptr) return kRefused;
    if (edgeMax == 0 || edgeOffset == 0 || layerStep == 0) return kRefused;
    if (maxLambda == 0 || wfSlope == 0 || alphaNorm == 0 || alphaHe == 0) return kRefused;
    const int32_t layerCount = CountFusionLayers(width, height);
    if (layerCount < 2) return kRefused;

    const FrameView<uint16_t> frame(normalImage, width, height);
    const FusionImage normal = MakeFusionImage(normalImage, width, height);
    const FusionImage hed = MakeFusionImage(hedImage, width, height);
    const FusionLayers layers = MakeFusionLayers(layerCount, edgeMax, edgeOffset, maxLambda);
    FusionWeights weights{};
    if (normal.span > 0 && hed.span > 0) {
        weights = MakeFusionWeights(normal, hed, width, height, layers, alphaNorm, alphaHe);
    }
    // Without a span, or a finite weight, no sum is a number.
    if (normal.span == 0 || hed.span == 0 || !weights.AreFinite()) {
        std::fill(frame.begin(), frame.end(), LowBits16(min));
        return kFused;
    }
    const auto low = static_cast<float>(min / kFusionScale);
    const auto high = static_cast<float>(max / kFusionScale);
    const auto range = static_cast<float>(double{high} - low);
    const LayerSums sums(normal, hed, width, height, weights, *FastestOf(FusionVariants()).run);
    sums.StretchInto(normalImage,
                     {.shift = 0, .largest = 0, .range = range, .low = low, .min = min, .max = max});
    return kFused;
}

}  // namespace vastrelline
