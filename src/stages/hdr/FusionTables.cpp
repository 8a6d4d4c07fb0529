// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/FusionTables.h"

#include <algorithm>
#include <cstddef>

#include "elementary/HyperbolicTangent.h"
#include "elementary/SineCosine.h"

namespace vastrelline {

namespace {

// One layer for so many pixels of the side that counts.
constexpr int32_t kPixelsPerLayer = 20;

FusionLayer MakeLayer(int32_t index, const std::vector<float>& gains, const std::vector<float>& lambdas) {
    const auto i = static_cast<size_t>(index);
    return {static_cast<double>(index) + 1.0, gains[i], lambdas[i], static_cast<float>(1.0 - lambdas[i])};
}

}  // namespace

int32_t CountFusionLayers(int32_t width, int32_t height) {
    if (width > height) return height / kPixelsPerLayer;
    // For whole numbers from 0 on this is the quotient plus a half, truncated.
    return (width + kPixelsPerLayer / 2) / kPixelsPerLayer;
}

std::vector<float> MakeLayerGains(int32_t layerCount, int32_t edgeMax, int32_t edgeOffset) {
    // Not quite a full turn, and never to be corrected: every gain follows from it.
    constexpr double kWindowTurn = 6.283184;
    const int32_t length = 2 * layerCount + 1;
    std::vector<float> window(static_cast<size_t>(length));
    for (int32_t i = 0; i < length; ++i) {
        window[static_cast<size_t>(i)] = static_cast<float>(0.5 * (1 - Cos(kWindowTurn * i / length)));
    }
    const double largest = *std::max_element(window.begin(), window.end());
    std::vector<float> gains(static_cast<size_t>(layerCount));
    for (size_t i = 0; i < gains.size(); ++i) {
        const auto scaled = static_cast<float>(window[gains.size() + i] / largest * edgeMax);
        gains[i] = static_cast<float>(scaled / 2.0 + edgeOffset);
    }
    return gains;
}

std::vector<float> MakeLayerLambdas(int32_t layerCount, float maxLambda) {
    std::vector<float> lambdas(static_cast<size_t>(layerCount));
    for (int32_t i = 0; i < layerCount; ++i) {
        const double place = (i + 1 - layerCount / 2.0) - 0.5;
        lambdas[static_cast<size_t>(i)] = static_cast<float>(Tanh(place / layerCount / 2.0 * 5.0));
    }
    const double smallest = *std::min_element(lambdas.begin(), lambdas.end());
    for (float& lambda : lambdas) lambda = static_cast<float>(lambda - smallest);
    const double largest = *std::max_element(lambdas.begin(), lambdas.end());
    for (float& lambda : lambdas) lambda = static_cast<float>(lambda / largest * maxLambda);
    return lambdas;
}

FusionLayers MakeFusionLayers(int32_t layerCount, int32_t edgeMax, int32_t edgeOffset, float maxLambda) {
    const std::vector<float> gains = MakeLayerGains(layerCount, edgeMax, edgeOffset);
    const std::vector<float> lambdas = MakeLayerLambdas(layerCount, maxLambda);
    return {MakeLayer(0, gains, lambdas), MakeLayer(layerCount - 1, gains, lambdas)};
}

}  // namespace vastrelline
