// SPDX-License-Identifier: Apache-2.0
#include "views/LevelLine.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vastrelline {

std::vector<LinePoint> ReadLevelLine(const Frame& frame, const FrameLine& line) {
    const double length = std::hypot(line.x1 - line.x0, line.y1 - line.y0);
    const auto steps = static_cast<int32_t>(std::min(std::floor(length), kMostLinePoints - 1.0));
    const double step = steps == 0 ? 0.0 : std::max(length / kMostLinePoints, 1.0);
    std::vector<LinePoint> points;
    for (int32_t i = 0; i <= steps; ++i) {
        const double distance = i * step;
        const double share = length > 0.0 ? distance / length : 0.0;
        const double x = std::floor(line.x0 + share * (line.x1 - line.x0));
        const double y = std::floor(line.y0 + share * (line.y1 - line.y0));
        if (!(x >= 0.0 && y >= 0.0 && x < frame.width && y < frame.height)) continue;
        const size_t place = PixelCount(frame.width, static_cast<int32_t>(y)) + static_cast<size_t>(x);
        points.push_back({distance, frame.pixels[place]});
    }
    return points;
}

}  // namespace vastrelline
