// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/WeightTable.h"

#include <algorithm>
#include <cstddef>

#include "elementary/SineCosine.h"
#include "stages/adaptive_unsharp/ValueHistogram.h"

namespace vastrelline {

std::optional<WeightTable> MakeSineWeightTable(const uint16_t* image, int32_t width, int32_t height,
                                               double startAngle, double endAngle, int32_t lowPercent,
                                               int32_t highPercent) {
    // With so many levels the piece of the sine spans more than one of them, at the shares in use.
    constexpr int32_t kFewestLevels = 10;
    int32_t smallest = 0;
    int32_t largest = 0;
    MinMaxPixels(image, width, height, smallest, largest);
    const int32_t count = largest - smallest + 1;
    if (count < kFewestLevels) return std::nullopt;

    WeightTable table{count, smallest, std::vector<double>(static_cast<size_t>(count))};
    double* values = table.values.data();
    const int32_t lo = count * lowPercent / 100;
    const int32_t hi = count - count * highPercent / 100 - 1;
    const double step = (endAngle - startAngle) / (hi - lo);
    double lowest = 10.0;
    double highest = -10.0;
    for (int32_t k = lo; k <= hi; ++k) {
        values[k] = Sin((k - lo) * step + startAngle);
        lowest = std::min(lowest, values[k]);
        highest = std::max(highest, values[k]);
    }
    for (int32_t k = lo; k <= hi; ++k) values[k] = (values[k] - lowest) / (highest - lowest);
    std::fill(values, values + lo, values[lo]);
    std::fill(values + hi + 1, values + count, values[hi]);
    return table;
}

}  // namespace vastrelline
