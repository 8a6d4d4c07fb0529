// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

namespace vastrelline {

// The shares of the two images and the gain of one layer.
struct FusionLayer {
    double sigma;     // pixels
    float gain;       // of the whole layer
    float hedShare;   // of the equalised image
    float restShare;  // of the normal image
};

// How many layers a frame's size stands for. Both branches divide the width or height by 20; the first rounds
// down, the second to nearest: results depend on it.
// width, height   0 or more
int32_t CountFusionLayers(int32_t width, int32_t height);

// The layers that the fusion works out of all that the size stands for: the first, of sigma 1, and the last.
//
// layerCount   2 or more
struct FusionLayers {
    FusionLayer fine;
    FusionLayer coarse;
};
FusionLayers MakeFusionLayers(int32_t layerCount, int32_t edgeMax, int32_t edgeOffset, float maxLambda);

// The gains of all layers: the falling half of a Hann window, scaled to edgeMax, halved, plus edgeOffset.
std::vector<float> MakeLayerGains(int32_t layerCount, int32_t edgeMax, int32_t edgeOffset);

// The equalised image's shares in all layers, from 0 in the first to maxLambda in the last.
std::vector<float> MakeLayerLambdas(int32_t layerCount, float maxLambda);

}  // namespace vastrelline
