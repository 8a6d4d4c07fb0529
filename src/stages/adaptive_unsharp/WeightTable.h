// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace vastrelline {

// A weight for each level of an image from `base` on.
struct WeightTable {
    int32_t count = 0;  // of the entries
    int32_t base = 0;   // the level of entry 0
    std::vector<double> values;
};

// The product of two images' weights at one pixel: tableA's at level a and tableB's at level b, both of which
// must be within their tables.
inline double WeightAt(int32_t a, int32_t b, const WeightTable& tableA, const WeightTable& tableB) {
    return tableA.values[static_cast<size_t>(a - tableA.base)] *
           tableB.values[static_cast<size_t>(b - tableB.base)];
}

// A table over the levels of an image that follows a piece of the sine, scaled to 0..1.
//
// startAngle, endAngle      the piece, in radians
// lowPercent, highPercent   of the levels, which the table leaves flat at its lower and its upper end
// Returns                   none for an image of less than 10 levels from its smallest to its largest
std::optional<WeightTable> MakeSineWeightTable(const uint16_t* image, int32_t width, int32_t height,
                                               double startAngle, double endAngle, int32_t lowPercent,
                                               int32_t highPercent);

}  // namespace vastrelline
