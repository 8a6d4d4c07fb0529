// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/FusionWeights.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "stages/hdr/GaussianSurface.h"

namespace vastrelline {

bool FusionWeights::AreFinite() const {
    const double weights[] = {normal, hed, fineNormal, coarseNormal, coarseHed};
    return std::all_of(std::begin(weights), std::end(weights),
                       [](double weight) { return std::isfinite(static_cast<float>(weight)); });
}

FusionWeights MakeFusionWeights(const FusionImage& normal, const FusionImage& hed, int32_t width,
                                int32_t height, const FusionLayers& layers, float alphaNorm, float alphaHe) {
    const FusionLayer& fine = layers.fine;
    const FusionLayer& coarse = layers.coarse;
    const double fineNormal = double{fine.gain} * fine.restShare / normal.span;
    const double coarseNormal = double{coarse.gain} * coarse.restShare / normal.span;
    const double coarseHed = double{coarse.gain} * coarse.hedShare / hed.span;
    const double fineSum = SumGaussianSurface(width, height, fine.sigma);
    const double coarseSum = KeptSumOfGaussianSurface(width, height, coarse.sigma);
    return {.normal = (fineNormal + coarseNormal) * (1.0 - alphaNorm),
            .hed = coarseHed * (1.0 - alphaHe),
            .fineNormal = fineNormal * alphaNorm / fineSum,
            .coarseNormal = coarseNormal * alphaNorm / coarseSum,
            .coarseHed = coarseHed * alphaHe / coarseSum,
            .fineSigma = fine.sigma,
            .coarseSigma = coarse.sigma};
}

}  // namespace vastrelline
