// SPDX-License-Identifier: Apache-2.0
#include "comparison/PairFigures.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "frames/LevelTop.h"

namespace vastrelline {
namespace {

uint16_t Brightest(const Frame& frame) {
    return frame.pixels.empty() ? uint16_t{0} : *std::max_element(frame.pixels.begin(), frame.pixels.end());
}

std::vector<DifferenceClass> Classify(const std::vector<size_t>& bySize) {
    std::vector<DifferenceClass> classes;
    const auto largest = static_cast<int32_t>(bySize.size()) - 1;
    for (int32_t least = 1, greatest = 1; least <= largest; least = greatest + 1, greatest *= 2) {
        const auto begin = bySize.begin() + least;
        const auto end = bySize.begin() + std::min(greatest, largest) + 1;
        classes.push_back({least, greatest, std::accumulate(begin, end, size_t{0})});
    }
    return classes;
}

// Below 2^29 pixels and 2^32 for a square: the sum has room.
uint64_t SumOfSquares(const std::vector<size_t>& bySize) {
    uint64_t sum = 0;
    for (size_t size = 1; size < bySize.size(); ++size) sum += uint64_t{size} * size * bySize[size];
    return sum;
}

}  // namespace

PairFigures ComparePixels(const Frame& first, const Frame& second, int32_t tolerance) {
    constexpr double kDecibelsOfTen = 10.0;
    FrameDifference difference = FindDifference(first, second);
    const std::vector<size_t>& bySize = difference.bySize;
    PairFigures figures;
    figures.pixels = first.pixels.size();
    figures.count = difference.count;
    const size_t from = std::min(static_cast<size_t>(tolerance) + 1, bySize.size());
    figures.beyond =
        std::accumulate(bySize.begin() + static_cast<std::ptrdiff_t>(from), bySize.end(), size_t{0});
    figures.largest = difference.largest;
    figures.largestPlace = difference.largestOne;
    figures.places = std::move(difference.places);
    figures.classes = Classify(bySize);
    figures.peak = UsualTop(std::max(Brightest(first), Brightest(second)));
    if (difference.count == 0) return figures;
    figures.meanSquare = static_cast<double>(SumOfSquares(bySize)) / static_cast<double>(figures.pixels);
    figures.psnr = kDecibelsOfTen * std::log10(double{1} * figures.peak * figures.peak / figures.meanSquare);
    return figures;
}

}  // namespace vastrelline
