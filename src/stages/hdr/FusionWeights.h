// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "stages/hdr/FusionTables.h"

namespace vastrelline {

// An image's pixels as the fusion takes them: less the smallest, divided by the span.
struct FusionImage {
    const uint16_t* pixels;
    int32_t smallest;
    int32_t span;  // above 0
};

// All that the fusion does before the final stretch is linear, so that its steps shrink to one weight each:
//
//   sum = normal * a + hed * b - fine(a) - coarse(a, b)
//
// with a and b the images less their smallest pixels, fine the blur of a with the fine surface and coarse the
// blur of a mix with the coarse one. In the fine layer the equalised image has no share.
struct FusionWeights {
    double normal;        // of a itself
    double hed;           // of b itself
    double fineNormal;    // of a in the fine blur, for surfaces not divided by their sum
    double coarseNormal;  // of a in the coarse blur, likewise
    double coarseHed;     // of b in the coarse blur, likewise
    double fineSigma;
    double coarseSigma;

    bool AreFinite() const;  // in single precision, too
};

FusionWeights MakeFusionWeights(const FusionImage& normal, const FusionImage& hed, int32_t width,
                                int32_t height, const FusionLayers& layers, float alphaNorm, float alphaHe);

}  // namespace vastrelline
