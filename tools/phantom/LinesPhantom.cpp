// SPDX-License-Identifier: Apache-2.0
#include "phantom/LinesPhantom.h"

#include <cstddef>

#include "phantom/BlurredStep.h"
#include "phantom/ExactTurn.h"

namespace vastrelline {
namespace {

constexpr int64_t kStream = 5;
constexpr int64_t kGapParts = 8;  // the plain stripes above and below a group have an eighth of its room each

double MeanLevel(const KnownLevels& levels) { return 0.5 * (levels.low + levels.high); }

// A row without noise.
std::vector<double> MakeRow(int32_t width, double mean, const LineGroup& group) {
    std::vector<double> row;
    row.reserve(static_cast<size_t>(width));
    for (int32_t x = 0; x < width; ++x)
        row.push_back(mean + group.amplitude * SineOfTurns(group.frequency * (x + 0.5)));
    return row;
}

}  // namespace

std::vector<LineGroup> LineGroupsOf(const LinesPhantom& phantom) {
    const BlurredStep step(0.0, phantom.blurPixels);  // weakens waves along the rows as an upright edge
    const double mean = MeanLevel(phantom.levels);
    const auto count = static_cast<int64_t>(phantom.frequencies.size());
    std::vector<LineGroup> groups;
    for (int64_t i = 0; i < count; ++i) {
        const int64_t begin = phantom.size.height * i / count;
        const int64_t end = phantom.size.height * (i + 1) / count;
        const int64_t gap = (end - begin) / kGapParts;
        LineGroup group;
        group.top = static_cast<int32_t>(begin + gap);
        group.height = static_cast<int32_t>(end - begin - 2 * gap);
        group.frequency = phantom.frequencies[static_cast<size_t>(i)];
        group.amplitude = (phantom.levels.high - mean) * step.ModulationAt(group.frequency);
        group.modulation = group.amplitude / mean;
        groups.push_back(group);
    }
    return groups;
}

Frame MakeLinesPhantom(const LinesPhantom& phantom) {
    const double mean = MeanLevel(phantom.levels);
    const std::vector<double> plain = MakeRow(phantom.size.width, mean, {});
    PhantomRandom random(StirBits(phantom.levels.seed, kStream, 0));
    Frame frame{phantom.size.width, phantom.size.height, {}};
    frame.pixels.reserve(PixelCount(frame.width, frame.height));
    const auto add = [&](const std::vector<double>& row, int32_t until) {
        while (frame.pixels.size() < PixelCount(frame.width, until))
            for (const double level : row)
                frame.pixels.push_back(NoisyPixel(level, phantom.noise, phantom.levels.topLevel, random));
    };
    for (const LineGroup& group : LineGroupsOf(phantom)) {
        add(plain, group.top);
        add(MakeRow(phantom.size.width, mean, group), group.top + group.height);
    }
    add(plain, frame.height);
    return frame;
}

}  // namespace vastrelline
