// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "support/Frames.h"
#include "support/PlainExposure.h"
#include "support/PlainGammaChain.h"

namespace vastrelline {

// What the configured chain does around its list of stages, and its linear stage, written down a second time
// to compare with: on single pixels and sorted ones, without histograms, tables and the full sensor frame.
// For frames of 12 bits.

using Pixels = std::vector<uint16_t>;

enum class CornerSide { None, Bottom, Top, Left, Right };

// How far a rounded corner reaches into the full frame, `place` pixels from the edge beside it: a chamfer of
// 20, or an outline of 30 that falls exponentially.
inline int32_t CornerDepth(int32_t place) {
    constexpr int32_t kChamfer = 20;
    constexpr int32_t kOutline = 30;
    int32_t depth = kChamfer + 1 - place;
    if (place < kOutline) {
        const double fall = kOutline * (std::exp(-0.01) - std::exp(-0.01 - 0.99 * place / kOutline)) /
                            (std::exp(-0.01) - std::exp(-1.0));
        depth = std::max(depth, kOutline + 1 - static_cast<int32_t>(fall));
    }
    return depth;
}

// Which pixels the corners at a side hide, in a frame cut by 1 column at the left, 3 at the right, 3 rows at
// the top and 1 at the bottom.
inline std::vector<bool> HiddenByOutline(int32_t width, int32_t height, CornerSide side) {
    std::vector<bool> isHidden;
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const int32_t fromLeft = x + 1;
            const int32_t fromRight = width + 2 - x;
            const int32_t fromTop = y + 3;
            const int32_t fromBottom = height - y;
            const int32_t depthOfColumn = CornerDepth(std::min(fromLeft, fromRight));
            const int32_t depthOfRow = CornerDepth(std::min(fromTop, fromBottom));
            isHidden.push_back((side == CornerSide::Bottom && fromBottom < depthOfColumn) ||
                               (side == CornerSide::Top && fromTop < depthOfColumn) ||
                               (side == CornerSide::Left && fromLeft < depthOfRow) ||
                               (side == CornerSide::Right && fromRight < depthOfRow));
        }
    }
    return isHidden;
}

// Without an outline: black pixels less than 170 steps from a corner, at the left or at the right, whichever
// has more of them. For frames wider than high.
inline std::vector<bool> HiddenByDarkness(const Frame& frame) {
    const auto isDarkCorner = [&](int32_t x, int32_t y, bool isRight, bool isBottom) {
        const int32_t steps = (isRight ? frame.width - 1 - x : x) + (isBottom ? frame.height - 1 - y : y);
        return steps < 170 && frame.At(x, y) == 0;
    };
    int32_t surplusAtRight = 0;
    for (int32_t y = 0; y < frame.height; ++y)
        for (int32_t x = 0; x < frame.width; ++x)
            for (const bool isBottom : {false, true})
                surplusAtRight += static_cast<int32_t>(isDarkCorner(x, y, true, isBottom)) -
                                  static_cast<int32_t>(isDarkCorner(x, y, false, isBottom));
    std::vector<bool> isHidden;
    for (int32_t y = 0; y < frame.height; ++y)
        for (int32_t x = 0; x < frame.width; ++x)
            isHidden.push_back(isDarkCorner(x, y, surplusAtRight >= 0, false) ||
                               isDarkCorner(x, y, surplusAtRight >= 0, true));
    return isHidden;
}

// From the middle of a row outward, the k-th hidden pixel takes the pixel k steps inside of the first one.
// For odd widths.
inline void PlainFill(Frame& frame, const std::vector<bool>& isHidden) {
    for (int32_t y = 0; y < frame.height; ++y) {
        for (const int32_t outward : {-1, 1}) {
            int32_t count = 0;
            int32_t first = 0;
            for (int32_t x = frame.width / 2 + outward; 0 <= x && x < frame.width; x += outward) {
                if (!isHidden[static_cast<size_t>(y * frame.width + x)]) continue;
                if (++count == 1) first = x;
                frame.At(x, y) = frame.At(first - outward * count, y);
            }
        }
    }
}

struct PlainTarget {
    int32_t range = 0;
    int32_t minimum = 0;
    float maxCut = 0;
    float minCut = 0;
};

// The threshold between the two parts of some values, approached by half steps from the middle one.
inline int32_t PlainThreshold(std::vector<int32_t> values) {
    std::sort(values.begin(), values.end());
    int32_t threshold = values[values.size() / 2 - 1];
    for (;;) {
        float sums[2] = {0, 0};
        float counts[2] = {0, 0};
        for (const int32_t value : values) {
            const size_t part = value < threshold ? 0 : 1;
            sums[part] += static_cast<float>(value);
            counts[part] += 1;
        }
        const float low = counts[0] > 0 ? sums[0] / counts[0] : 0;
        const float high = counts[1] > 0 ? sums[1] / counts[1] : 0;
        const float middle = (low + high) / 2;
        const auto next = static_cast<int32_t>((middle + static_cast<float>(threshold)) / 2);
        if (next == threshold || std::fabs(high - low) <= middle * 0.0001F) return threshold;
        threshold = next;
    }
}

inline Pixels PlainTargetRange(Pixels pixels, const PlainTarget& target) {
    Pixels sorted = pixels;
    std::sort(sorted.begin(), sorted.end());
    const auto count = static_cast<float>(sorted.size());
    auto low = static_cast<float>(sorted[static_cast<size_t>(count * target.minCut)]);
    if (low < static_cast<float>(target.minimum)) low += static_cast<float>(target.minimum);

    // The brightest level, and from the top down those with more than 1, 2, ... 18 cuts of pixels at them or
    // above. No level stands for two cuts.
    std::vector<int32_t> tail = {sorted.back()};
    int32_t level = 4095;
    for (int32_t cuts = 1; cuts <= 18; ++cuts, --level) {
        const auto limit = static_cast<int32_t>(static_cast<float>(cuts) * (count * target.maxCut));
        while (sorted.end() - std::lower_bound(sorted.begin(), sorted.end(), level) <= limit) --level;
        tail.push_back(level);
    }
    auto high = static_cast<float>(std::min(PlainThreshold(tail), tail[1]));
    if (high - low < 200) high = low + 200;

    const auto wanted = static_cast<float>(target.range);
    if (wanted <= high - low) return pixels;
    const auto darkest = static_cast<float>(sorted.front());
    const auto brightest = static_cast<float>(sorted.back());
    const int32_t top = std::min(static_cast<int32_t>(wanted * (brightest - darkest) / (high - low)), 4095);
    for (uint16_t& pixel : pixels)
        pixel = static_cast<uint16_t>(static_cast<float>(pixel) / brightest * static_cast<float>(top));
    return pixels;
}

// From dark to bright and back, by the inversion's mode.
inline Pixels PlainInversion(Pixels pixels, int32_t mode, int32_t maxValue, double ratio) {
    const int32_t low = *std::min_element(pixels.begin(), pixels.end());
    const int32_t high = *std::max_element(pixels.begin(), pixels.end());
    const int32_t levels = high - low + 1;
    const auto start = static_cast<int32_t>(levels * ratio);
    for (uint16_t& pixel : pixels) {
        const int32_t i = pixel - low;
        if (mode == 1) {
            pixel = static_cast<uint16_t>(maxValue - pixel);
        } else if (mode == 2) {
            const double whole = std::log(levels + start) - std::log(start);
            pixel = static_cast<uint16_t>(
                static_cast<int32_t>(levels - levels * (std::log(i + start) - std::log(start)) / whole) +
                low);
        } else if (mode == 3) {
            const double x = i / static_cast<double>(high - low);
            const double y = ratio >= 0 ? std::pow(x, ratio) : 1 - std::pow(1 - x, 1 / -ratio);
            pixel = static_cast<uint16_t>((high - low) - (high - low) * y + low);
        }
    }
    return pixels;
}

// A straight ramp from 0 at `low` to outputRange at `high`. Pixels above maxValue count as maxValue.
inline Pixels PlainRamp(Pixels pixels, int32_t low, int32_t high, int32_t outputRange, int32_t maxValue) {
    for (uint16_t& pixel : pixels) {
        const int32_t level = std::min<int32_t>(pixel, maxValue);
        const double value = outputRange * ((level - low) / static_cast<double>(high - low));
        pixel = static_cast<uint16_t>(std::clamp<double>(value, 0, outputRange));
    }
    return pixels;
}

// The highest level of a pixel that stands out: in a table up to maxValue the mean count of the 50 levels
// around it, 25 of them below and taken as 51, rounded down, is above the limit. Where the table ends the
// levels that exist are divided by their number.
inline int32_t HighestThatStandsOut(const Pixels& pixels, int32_t maxValue, int32_t limit) {
    Pixels sorted = pixels;
    std::sort(sorted.begin(), sorted.end());
    for (size_t i = sorted.size(); i-- > 0;) {
        const int32_t level = sorted[i];
        if (level > maxValue) continue;
        const int32_t first = std::max(level - 25, 0);
        const int32_t end = std::min(level + 25, maxValue + 1);
        const bool isWhole = level >= 25 && level <= maxValue - 25;
        const auto count = std::lower_bound(sorted.begin(), sorted.end(), end) -
                           std::lower_bound(sorted.begin(), sorted.end(), first);
        if (count / (isWhole ? 51 : end - first) > limit) return level;
    }
    return maxValue;
}

inline Pixels PlainLinear(const Pixels& pixels, int32_t maxValue, int32_t outputRange, int32_t limit) {
    return PlainRamp(pixels, 0, HighestThatStandsOut(pixels, maxValue, limit), outputRange, maxValue);
}

// The linear stage's mode of a window, `shift` off the middle and wider by its magnitude.
inline Pixels PlainWindow(const Pixels& pixels, int32_t maxValue, int32_t outputRange, int32_t shift) {
    const auto centre = static_cast<int32_t>(maxValue / 2.0 + shift);
    const auto half = static_cast<int32_t>((maxValue + std::abs(shift)) / 2.0 + 0.5);
    return PlainRamp(pixels, centre - half, centre + half, outputRange, 0xFFFF);
}

struct PlainSettings {
    CornerSide corners = CornerSide::Bottom;  // None: no sensor has given its outline
    bool isOutlineKnown = false;              // to the exposure curve, as from the second call on
    bool isMasked = true;
    int32_t bits = 12;
    int32_t saturation = 4095;
    PlainTarget target{};
    int32_t inversion = 1;
    double inversionRatio = 0.2;
    std::vector<std::function<Pixels(Pixels)>> stages{};
    bool isMapped = false;
};

// The whole call.
inline Frame PlainCall(Frame frame, const PlainSettings& settings) {
    std::vector<bool> isHidden = HiddenByOutline(frame.width, frame.height, settings.corners);
    frame.pixels = PlainExposure(frame.pixels, settings.isOutlineKnown ? isHidden : std::vector<bool>());

    int32_t maxValue = (1 << settings.bits) - 1;
    if (settings.bits > 16) {
        frame.pixels = PlainLinear(frame.pixels, maxValue, 0xFFFF, 0);
        maxValue = 0xFFFF;
    }
    frame.pixels = PlainCap(frame.pixels, settings.saturation);
    if (settings.corners == CornerSide::None) isHidden = HiddenByDarkness(frame);
    if (settings.isMasked) PlainFill(frame, isHidden);
    frame.pixels = PlainTargetRange(frame.pixels, settings.target);
    frame.pixels = PlainInversion(frame.pixels, settings.inversion, maxValue, settings.inversionRatio);
    for (const auto& stage : settings.stages) frame.pixels = stage(frame.pixels);

    const uint16_t brightest = *std::max_element(frame.pixels.begin(), frame.pixels.end());
    for (size_t i = 0; i < frame.pixels.size(); ++i) {
        uint16_t& pixel = frame.pixels[i];
        if (settings.isMasked && isHidden[i])
            pixel = i < 2 ? uint16_t{4095} : settings.inversion != 0 ? uint16_t{0} : brightest;
        if (settings.isMapped)
            pixel = static_cast<uint16_t>((std::min<int32_t>(pixel, 4095) + 3000) * 4095 / 10000);
    }
    return frame;
}

}  // namespace vastrelline
