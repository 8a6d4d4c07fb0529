// SPDX-License-Identifier: Apache-2.0
#include "measure/WedgeMeasure.h"

#include <algorithm>
#include <cmath>

namespace vastrelline {
namespace {

constexpr int64_t kFifths = 5;
constexpr double kMostClipped = 0.01;    // a hundredth cut off makes the deviation smaller by some hundredths
constexpr double kSureDifference = 5.0;  // in deviations of a difference of two means

PixelArea InsideOfStep(const Frame& frame, int64_t index, int64_t count) {
    const int64_t begin = frame.width * index / count;
    const int64_t width = frame.width * (index + 1) / count - begin;
    const int64_t edge = width / kFifths;
    const int64_t border = count == 1 ? 0 : edge;
    return {static_cast<int32_t>(begin + border), 0, static_cast<int32_t>(width - 2 * border), frame.height};
}

// Steps side by side.
std::vector<MeasuredStep> MeasureSteps(const Frame& frame, int32_t count, int32_t clippingLevel) {
    std::vector<MeasuredStep> steps;
    for (int32_t i = 0; i < count; ++i) {
        MeasuredStep step;
        step.area = InsideOfStep(frame, i, count);
        step.noise = MeasureFlatNoise(frame, step.area, clippingLevel);
        step.isClipped = step.noise.clippedShare > kMostClipped;
        if (!steps.empty()) {
            const MeasuredStep& before = steps.back();
            step.difference = step.noise.mean - before.noise.mean;
            const double noise = std::sqrt(0.5 * (step.noise.deviation * step.noise.deviation +
                                                  before.noise.deviation * before.noise.deviation));
            if (noise > 0.0 && !step.isClipped && !before.isClipped)
                step.contrastToNoise = std::fabs(*step.difference) / noise;
        }
        steps.push_back(step);
    }
    return steps;
}

double RangeOf(const std::vector<MeasuredStep>& steps) {
    const auto [least, greatest] = std::minmax_element(
        steps.begin(), steps.end(),
        [](const MeasuredStep& one, const MeasuredStep& other) { return one.noise.mean < other.noise.mean; });
    return greatest->noise.mean - least->noise.mean;
}

bool Differ(const std::vector<MeasuredStep>& steps) {
    double variance = 0.0;
    for (const MeasuredStep& step : steps)
        variance = std::max(variance, 2.0 * step.noise.deviation * step.noise.deviation /
                                          static_cast<double>(PixelCount(step.area.width, step.area.height)));
    return RangeOf(steps) > kSureDifference * std::sqrt(variance);
}

}  // namespace

WedgeMeasure MeasureWedge(const Frame& frame, int32_t steps) {
    const int32_t clippingLevel = ClippingLevel(frame);
    WedgeMeasure measure;
    if (steps == 1) {
        measure.steps = MeasureSteps(frame, 1, clippingLevel);
        return measure;
    }
    measure.steps = MeasureSteps(frame, steps, clippingLevel);
    const Frame turned = Transpose(frame);
    constexpr int32_t kLeastRoom = 8;  // of a step, so that its inside can be measured
    if (turned.width / steps >= kLeastRoom) {
        std::vector<MeasuredStep> down = MeasureSteps(turned, steps, clippingLevel);
        if (RangeOf(down) > RangeOf(measure.steps)) {
            for (MeasuredStep& step : down) {
                std::swap(step.area.left, step.area.top);
                std::swap(step.area.width, step.area.height);
            }
            measure = {true, std::move(down)};
        }
    }
    if (!Differ(measure.steps))
        throw CannotMeasure("there is no wedge: its " + std::to_string(steps) + " steps are of one level",
                            "--area names the part that has the wedge, --steps 1 measures an even area");
    return measure;
}

}  // namespace vastrelline
