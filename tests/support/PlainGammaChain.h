// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace vastrelline {

// The configured chain with gamma stages only, written down a second time, pixel by pixel and without
// histograms or tables, to compare with.

// Nothing at or above the saturation value stays above the brightest pixel below it.
inline std::vector<uint16_t> PlainCap(std::vector<uint16_t> pixels, int32_t saturationValue) {
    std::vector<uint16_t> sorted = pixels;
    std::sort(sorted.begin(), sorted.end());
    const auto firstSaturated =
        std::find_if(sorted.begin(), sorted.end(), [&](uint16_t pixel) { return pixel >= saturationValue; });
    const uint16_t limit = firstSaturated == sorted.begin() ? uint16_t{0} : *(firstSaturated - 1);
    for (uint16_t& pixel : pixels)
        if (pixel > limit) pixel = limit;
    return pixels;
}

// The exponent of a ratio: for a fraction, the level of the pixel that comes behind that many brightest ones.
inline double PlainExponent(const std::vector<uint16_t>& pixels, int32_t outputRange, double ratio) {
    if (ratio >= 1 || ratio <= -1) return ratio;
    std::vector<int32_t> brightestFirst(pixels.begin(), pixels.end());
    for (int32_t& pixel : brightestFirst) pixel = std::min(pixel, outputRange);
    std::sort(brightestFirst.begin(), brightestFirst.end(), std::greater<>());
    const double count = std::trunc(static_cast<double>(pixels.size()) * ratio);
    const int32_t level = count < 0 ? outputRange : brightestFirst.at(static_cast<size_t>(count));
    const double darkness = (outputRange - level) / (outputRange / 2.0);
    return (1 - std::min(std::max(darkness, 0.0), 1.0)) + 1;
}

// One gamma stage on a frame that has at least two levels and none above the table.
inline std::vector<uint16_t> PlainGamma(std::vector<uint16_t> pixels, int32_t outputRange, double ratio) {
    const double gamma = PlainExponent(pixels, outputRange, ratio);
    const int32_t low = *std::min_element(pixels.begin(), pixels.end());
    const int32_t high = *std::max_element(pixels.begin(), pixels.end());
    for (uint16_t& pixel : pixels) {
        const double x = static_cast<double>(pixel - low) / static_cast<double>(high - low);
        const double y = gamma >= 0 ? std::pow(x, gamma) : 1.0 - std::pow(1.0 - x, 1.0 / -gamma);
        pixel = static_cast<uint16_t>(outputRange * y);
    }
    return pixels;
}

}  // namespace vastrelline
