// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_smoothing/BandMean.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "pixels/FrameView.h"

namespace vastrelline {

namespace {

// Runs a window along `count` elements and hands out the mean at each place from `first` to `last`. The sum
// starts as that of the place before element 0, wherever `first` lies.
template <typename ElementAt, typename SetMean>
void RunWindow(int32_t count, int32_t first, int32_t last, int32_t radius, const ElementAt& elementAt,
               const SetMean& setMean) {
    const auto at = [&](int32_t index) { return elementAt(std::clamp(index, 0, count - 1)); };
    const int32_t window = 2 * radius + 1;
    double sum = 0.0;
    for (int32_t k = -radius - 1; k <= radius - 1; ++k) sum += at(k);
    for (int32_t place = first; place <= last; ++place) {
        sum -= at(place - radius - 1);
        sum += at(place + radius);
        setMean(place, sum / window);
    }
}

template <typename Element>
void BandMean(const FrameView<const Element>& source, const FrameView<double>& destination, int32_t top,
              int32_t bottom, int32_t radius) {
    std::fill(destination.begin(), destination.end(), 0.0);
    if (destination.Count() == 0) return;
    for (int32_t y = top; y <= bottom; ++y) {
        const Element* from = source.Row(y);
        double* to = destination.Row(y);
        RunWindow(
            source.Width(), 0, source.Width() - 1, radius,
            [&](int32_t x) { return static_cast<double>(from[x]); },
            [&](int32_t x, double mean) { to[x] = mean; });
    }
    std::vector<double> line(static_cast<size_t>(source.Height()));
    for (int32_t x = 0; x < source.Width(); ++x) {
        // Taken from row 0 on, yet laid down at `top`: the displacement.
        for (int32_t y = top; y <= bottom; ++y) line[static_cast<size_t>(y)] = destination.Row(y - top)[x];
        RunWindow(
            source.Height(), top, bottom, radius, [&](int32_t y) { return line[static_cast<size_t>(y)]; },
            [&](int32_t y, double mean) { destination.Row(y)[x] = mean; });
    }
}

}  // namespace

void BandMeanPixels(const uint16_t* source, double* destination, int32_t width, int32_t height, int32_t top,
                    int32_t bottom, int32_t radius) {
    BandMean<uint16_t>({source, width, height}, {destination, width, height}, top, bottom, radius);
}

void BandMeanDoubles(const double* source, double* destination, int32_t width, int32_t height, int32_t top,
                     int32_t bottom, int32_t radius) {
    BandMean<double>({source, width, height}, {destination, width, height}, top, bottom, radius);
}

}  // namespace vastrelline
