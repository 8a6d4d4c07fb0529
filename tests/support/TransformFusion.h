// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "pixels/Truncate.h"

// One thread, as the library runs.
#define POCKETFFT_NO_MULTITHREADING
#include <pocketfft_hdronly.h>

// The fusion of layers in its plain form, by two-dimensional transforms of whole images: the definition that
// the library's fast form is compared with and timed against. Real is float, in which results are defined, or
// double, which tells how far off single precision is; the surface's running sum is in single precision in
// both.
namespace vastrelline::by_transforms {

struct FusionArguments {
    int32_t min;
    int32_t max;
    int32_t edgeMax = 1;
    int32_t edgeOffset = 1;
    float maxLambda = 0.9F;
    float wfSlope = 0.005F;
    float alphaNorm = 0.3F;
    float alphaHe = 0.3F;
    int32_t layerStep = 20;
};

template <typename Real>
using Spectrum = std::vector<std::complex<Real>>;

// Transforms the rows or the columns in place; unscaled forward, by `scale` on the way back.
template <typename Real>
void Transform(Spectrum<Real>& values, int32_t width, int32_t height, bool alongRows, bool isForward,
               double scale = 1.0) {
    const auto columns = static_cast<size_t>(width);
    const auto rows = static_cast<size_t>(height);
    const auto step = static_cast<std::ptrdiff_t>(sizeof(std::complex<Real>));
    const pocketfft::stride_t strides = {step * width, step};
    pocketfft::c2c({rows, columns}, strides, strides, {alongRows ? size_t{1} : size_t{0}}, isForward,
                   values.data(), values.data(), static_cast<Real>(scale));
}

// Halves of whole numbers, which both precisions hold exactly.
template <typename Real>
std::vector<Real> MakeCoordinates(int32_t count) {
    std::vector<Real> coordinates;
    for (int32_t i = 0; i < count; ++i) coordinates.push_back(static_cast<Real>((i + 1) - (count / 2) - 0.5));
    return coordinates;
}

template <typename Real>
int32_t MakeGaussianSurface(std::vector<Real>& surface, const std::vector<Real>& columnCoordinates,
                            const std::vector<Real>& rowCoordinates, double sigma, int32_t width,
                            int32_t height) {
    if (width == 0 || height == 0 || sigma == 0) return 0;
    float total = 0;
    size_t i = 0;
    for (const Real y : rowCoordinates) {
        for (const Real x : columnCoordinates) {
            const double square = (double{x} * x + double{y} * y) * -1.0;
            const auto t = static_cast<Real>(square);
            const auto u = static_cast<Real>(t / (sigma * 2.0 * sigma));
            surface[i] = std::exp(u);
            const double single = static_cast<float>(static_cast<float>(square) / (sigma * 2.0 * sigma));
            total += std::exp(static_cast<float>(single));
            ++i;
        }
    }
    for (Real& entry : surface) entry /= total;
    return 1;
}

// Halves change places. With an odd size the last row and column are not reached.
template <typename Real>
void SwapQuadrants(const Spectrum<Real>& from, std::vector<Real>& to, int32_t width, int32_t height) {
    const int32_t hw = width / 2;
    const int32_t hh = height / 2;
    const auto move = [&](int32_t top, int32_t bottom, int32_t left, int32_t right, int32_t down,
                          int32_t aside) {
        for (int32_t y = top; y < bottom; ++y)
            for (int32_t x = left; x < right; ++x)
                to[static_cast<size_t>(y + down) * static_cast<size_t>(width) +
                   static_cast<size_t>(x + aside)] =
                    from[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)].real();
    };
    move(hh, height, hw, width, -hh, -hw);
    move(hh, height, 0, hw, -hh, hw);
    move(0, hh, hw, width, hh, -hw);
    move(0, hh, 0, hw, hh, hw);
}

template <typename Real>
void FilterLayer(const std::vector<Real>& source, std::vector<Real>& result, const std::vector<Real>& surface,
                 float alpha, float weight, int32_t width, int32_t height) {
    Spectrum<Real> a(source.begin(), source.end());
    Spectrum<Real> b(surface.begin(), surface.end());
    for (const bool alongRows : {true, false}) {
        Transform(a, width, height, alongRows, true);
        Transform(b, width, height, alongRows, true);
    }
    std::vector<Real> real(source.size());
    for (size_t i = 0; i < a.size(); ++i) {
        const Real imaginary = a[i].real() * b[i].imag() + a[i].imag() * b[i].real();
        real[i] = a[i].real() * b[i].real() - a[i].imag() * b[i].imag();
        a[i] = {real[i], imaginary};
    }
    Transform(a, width, height, false, false);
    Transform(a, width, height, true, false, 1.0 / (static_cast<double>(height) * width));
    SwapQuadrants(a, real, width, height);
    for (size_t i = 0; i < result.size(); ++i)
        result[i] = static_cast<Real>(((1.0 - alpha) * source[i] - double{alpha} * real[i]) * weight);
}

template <typename Real>
std::vector<Real> Normalise(const std::vector<uint16_t>& pixels) {
    const auto [smallest, largest] = std::minmax_element(pixels.begin(), pixels.end());
    const double span = *largest - *smallest;
    std::vector<Real> values;
    for (const uint16_t pixel : pixels) values.push_back(static_cast<Real>((pixel - *smallest) / span));
    return values;
}

inline int32_t CountLayers(int32_t width, int32_t height) {
    return width > height ? height / 20 : static_cast<int32_t>(width / 20.0 + 0.5);
}

struct LayerTables {
    std::vector<float> gain;
    std::vector<float> lambda;
};

inline LayerTables MakeLayerTables(int32_t layerCount, const FusionArguments& arguments) {
    LayerTables tables;
    const int32_t n = 2 * layerCount + 1;
    std::vector<float> window;
    for (int32_t i = 0; i < n; ++i)
        window.push_back(static_cast<float>(0.5 * (1 - std::cos(6.283184 * i / n))));
    const float largest = *std::max_element(window.begin(), window.end());
    for (float& entry : window) entry = static_cast<float>(double{entry} / largest * arguments.edgeMax);
    for (int32_t i = 0; i < layerCount; ++i) {
        const float entry = window[static_cast<size_t>(layerCount + i)];
        tables.gain.push_back(static_cast<float>(entry / 2.0 + arguments.edgeOffset));
        const double place = (i + 1 - layerCount / 2.0) - 0.5;
        tables.lambda.push_back(static_cast<float>(std::tanh(place / layerCount / 2.0 * 5.0)));
    }
    const float smallest = *std::min_element(tables.lambda.begin(), tables.lambda.end());
    for (float& lambda : tables.lambda) lambda = static_cast<float>(double{lambda} - smallest);
    const float widest = *std::max_element(tables.lambda.begin(), tables.lambda.end());
    for (float& lambda : tables.lambda)
        lambda = static_cast<float>(double{lambda} / widest * arguments.maxLambda);
    return tables;
}

// `normalImage` becomes the result. Both are width * height pixels, not flat; with fewer than two layers,
// where the steps from layer to layer would have no end, nothing happens.
template <typename Real>
void FuseLayers(std::vector<uint16_t>& normalImage, const std::vector<uint16_t>& hedImage, int32_t width,
                int32_t height, const FusionArguments& arguments) {
    const auto scale = std::trunc(std::pow(2.0, 12) - 1.0);
    const std::vector<Real> a = Normalise<Real>(normalImage);
    const std::vector<Real> b = Normalise<Real>(hedImage);
    const int32_t layerCount = CountLayers(width, height);
    if (layerCount < 2) return;
    const LayerTables tables = MakeLayerTables(layerCount, arguments);
    const std::vector<Real> columns = MakeCoordinates<Real>(width);
    const std::vector<Real> rows = MakeCoordinates<Real>(height);
    std::vector<Real> surface(a.size());
    std::vector<Real> layerA(a.size());
    std::vector<Real> layerB(a.size());
    std::vector<Real> sum(a.size());
    for (int32_t i = 0; i < layerCount; i += layerCount - 1) {
        const float lambda = tables.lambda[static_cast<size_t>(i)];
        const auto rest = static_cast<float>(1.0 - lambda);
        MakeGaussianSurface(surface, columns, rows, i + 1, width, height);
        FilterLayer(a, layerA, surface, arguments.alphaNorm, rest, width, height);
        FilterLayer(b, layerB, surface, arguments.alphaHe, lambda, width, height);
        for (size_t p = 0; p < sum.size(); ++p) {
            const Real both = layerA[p] + layerB[p];
            sum[p] += static_cast<Real>(both * tables.gain[static_cast<size_t>(i)]);
        }
    }
    const auto low = static_cast<float>(arguments.min / scale);
    const auto high = static_cast<float>(arguments.max / scale);
    const auto range = static_cast<float>(double{high} - low);
    const auto beforeLastRow = sum.end() - width;
    const Real smallest = *std::min_element(sum.begin(), beforeLastRow);
    if (smallest < 0) {
        for (auto entry = sum.begin(); entry != beforeLastRow; ++entry) *entry += -smallest;
    }
    const Real largest = *std::max_element(sum.begin(), beforeLastRow);
    for (size_t p = 0; p < sum.size(); ++p) {
        const auto stretched = static_cast<Real>(double{sum[p]} / largest * range + low);
        const int32_t value = TruncateToInt32(scale * stretched);
        normalImage[p] = static_cast<uint16_t>(value > arguments.max   ? arguments.max
                                               : value < arguments.min ? arguments.min
                                                                       : value);
    }
}

}  // namespace vastrelline::by_transforms
