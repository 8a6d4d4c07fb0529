// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace vastrelline {

// The exposure curve that the exports run on their input, written down a second time, pixel by pixel, to
// compare with. For frames of up to 4095 whose dark corners, if any, are not among their brightest hundredth;
// pixels under the sensor's outline, if it is known, do not count for the clip.
inline std::vector<uint16_t> PlainExposure(std::vector<uint16_t> pixels,
                                           const std::vector<bool>& isHidden = {}) {
    std::vector<int32_t> brightestFirst;
    for (size_t i = 0; i < pixels.size(); ++i)
        if (isHidden.empty() || !isHidden[i]) brightestFirst.push_back(pixels[i]);
    std::sort(brightestFirst.begin(), brightestFirst.end(), std::greater<>());
    const auto hundredth = static_cast<size_t>(0.01 * static_cast<double>(pixels.size()));
    const int32_t black = *std::min_element(pixels.begin(), pixels.end());
    const int32_t span = brightestFirst.at(hundredth) - black;
    const auto lowLevel = static_cast<int32_t>(span * 250 / 4095.0) + black;
    const int32_t highLevel = std::max(static_cast<int32_t>(span * 3800 / 4095.0) + black, 1800);
    for (uint16_t& pixel : pixels) {
        if (lowLevel < 250 && pixel < lowLevel) {
            pixel = static_cast<uint16_t>(lowLevel * std::pow(static_cast<double>(pixel) / lowLevel, 0.55));
        } else {
            pixel = std::min(pixel, static_cast<uint16_t>(highLevel));
        }
    }
    return pixels;
}

}  // namespace vastrelline
