// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <vector>

#include "operators/box_mean/BoxMean.h"

namespace vastrelline {

namespace {

// The sum over the window before the first place, -radius - 1 to radius - 1. What lies beyond the ends is
// counted, not walked: a radius may be anything.
int64_t SumBeforeFirst(const std::vector<uint16_t>& line, int64_t radius) {
    const auto count = static_cast<int64_t>(line.size());
    int64_t sum = (radius + 1) * line.front();
    for (int64_t i = 0; i < radius && i < count; ++i) sum += line[static_cast<size_t>(i)];
    if (radius > count) sum += (radius - count) * line.back();
    return sum;
}

// Replaces a line by its running means. A sum stays below 2^32 elements times 2^16.
void MeanLine(const std::vector<uint16_t>& line, int64_t radius, std::vector<uint16_t>& means) {
    const auto count = static_cast<int32_t>(line.size());
    const auto at = [&](int64_t index) { return line[static_cast<size_t>(ClampIndex(index, count))]; };
    const int64_t window = 2 * radius + 1;
    int64_t sum = SumBeforeFirst(line, radius);
    for (int32_t i = 0; i < count; ++i) {
        sum += at(i + radius) - at(i - radius - 1);
        means[static_cast<size_t>(i)] = static_cast<uint16_t>(sum / window);
    }
}

}  // namespace

void BoxMeanScalar(const BoxMeanCall& call) {
    const auto width = static_cast<size_t>(call.width);
    const auto height = static_cast<size_t>(call.height);
    std::vector<uint16_t> line(width);
    std::vector<uint16_t> means(width);
    for (size_t y = 0; y < height; ++y) {
        line.assign(call.source + y * width, call.source + (y + 1) * width);
        MeanLine(line, call.radius, means);
        for (size_t x = 0; x < width; ++x) call.destination[y * width + x] = means[x];
    }
    line.resize(height);
    means.resize(height);
    for (size_t x = 0; x < width; ++x) {
        for (size_t y = 0; y < height; ++y) line[y] = call.destination[y * width + x];
        MeanLine(line, call.radius, means);
        for (size_t y = 0; y < height; ++y) call.destination[y * width + x] = means[y];
    }
}

}  // namespace vastrelline
