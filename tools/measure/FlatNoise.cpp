// SPDX-License-Identifier: Apache-2.0
#include "measure/FlatNoise.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace vastrelline {
namespace {

constexpr int32_t kBlockSide = 16;
constexpr int32_t kLeastSide = 4;
constexpr double kPlaneParameters = 3.0;
constexpr size_t kFewBlocks = 3;  // of fewer the median is their mean, or near it

// The variance around the plane that fits a block best. On a grid with its middle as origin the plane's three
// parameters are independent of each other.
double VarianceAroundPlane(const Frame& frame, const PixelArea& block) {
    double sum = 0.0;
    double squares = 0.0;
    double across = 0.0;
    double down = 0.0;
    double acrossSquares = 0.0;
    double downSquares = 0.0;
    const double base = frame.pixels[PixelCount(frame.width, block.top) + static_cast<size_t>(block.left)];
    for (int32_t y = 0; y < block.height; ++y)
        for (int32_t x = 0; x < block.width; ++x) {
            const double level = frame.pixels[PixelCount(frame.width, block.top + y) +
                                              static_cast<size_t>(block.left) + static_cast<size_t>(x)] -
                                 base;
            const double dx = x - 0.5 * (block.width - 1);
            const double dy = y - 0.5 * (block.height - 1);
            sum += level;
            squares += level * level;
            across += dx * level;
            down += dy * level;
            acrossSquares += dx * dx;
            downSquares += dy * dy;
        }
    const double count = static_cast<double>(PixelCount(block.width, block.height));
    const double rest =
        squares - sum * sum / count - across * across / acrossSquares - down * down / downSquares;
    return std::max(rest, 0.0) / (count - kPlaneParameters);
}

double Median(std::vector<double> values) {
    const size_t middle = values.size() / 2;
    std::sort(values.begin(), values.end());
    return values.size() % 2 == 1 ? values[middle] : 0.5 * (values[middle - 1] + values[middle]);
}

}  // namespace

FlatNoise MeasureFlatNoise(const Frame& frame, const PixelArea& area, int32_t clippingLevel) {
    if (std::min(area.width, area.height) < kLeastSide)
        throw CannotMeasure("an area of " + std::to_string(area.width) + "x" + std::to_string(area.height) +
                                " pixels is too small to tell noise",
                            "at least 4x4 are needed");
    const int32_t side = std::min({kBlockSide, area.width, area.height});
    std::vector<double> variances;
    for (int32_t y = 0; y + side <= area.height; y += side)
        for (int32_t x = 0; x + side <= area.width; x += side)
            variances.push_back(VarianceAroundPlane(frame, {area.left + x, area.top + y, side, side}));
    double variance = Median(variances);
    if (variances.size() >= kFewBlocks) {
        const double freedom = static_cast<double>(side) * side - kPlaneParameters;
        const double root = 1.0 - 2.0 / (9.0 * freedom);
        variance /= root * root * root;
    }
    FlatNoise noise;
    noise.deviation = std::sqrt(variance);
    double sum = 0.0;
    size_t clipped = 0;
    for (int32_t y = area.top; y < area.top + area.height; ++y)
        for (int32_t x = area.left; x < area.left + area.width; ++x) {
            const uint16_t level = frame.pixels[PixelCount(frame.width, y) + static_cast<size_t>(x)];
            sum += level;
            if (level == 0 || level >= clippingLevel) ++clipped;
        }
    const double count = static_cast<double>(PixelCount(area.width, area.height));
    noise.mean = sum / count;
    noise.clippedShare = static_cast<double>(clipped) / count;
    return noise;
}

}  // namespace vastrelline
