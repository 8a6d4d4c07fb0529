// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "frames/CurvePoint.h"

namespace vastrelline {

// How many pixels have each level, from `first` on.
struct LevelCounts {
    int32_t first = 0;
    std::vector<size_t> counts;
};

// Of levels in any order; of none all is empty.
template <typename Level>
LevelCounts CountLevels(const std::vector<Level>& levels) {
    LevelCounts histogram;
    if (levels.empty()) return histogram;
    int32_t least = levels.front();
    int32_t greatest = levels.front();
    for (const Level level : levels) {
        least = level < least ? level : least;
        greatest = level > greatest ? level : greatest;
    }
    histogram.first = least;
    histogram.counts.resize(static_cast<size_t>(greatest - least) + 1);
    for (const Level level : levels) ++histogram.counts[static_cast<size_t>(level - least)];
    return histogram;
}

// A curve over the histogram of the levels that it is laid over, as an SVG file without anything from
// elsewhere. The histogram's heights are square roots, so that rare levels are seen beside frequent ones; a
// dashed line is the curve that changes nothing.
//
// points   at least one, by level
std::string DrawCurveSvg(const std::string& title, const LevelCounts& histogram,
                         const std::vector<CurvePoint>& points);

}  // namespace vastrelline
