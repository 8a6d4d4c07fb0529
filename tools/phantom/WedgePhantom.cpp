// SPDX-License-Identifier: Apache-2.0
#include "phantom/WedgePhantom.h"

#include <cmath>
#include <cstddef>

namespace vastrelline {
namespace {

constexpr int64_t kStream = 3;  // keeps the noise apart from that of other kinds of the same seed

}  // namespace

std::vector<WedgeStep> WedgeStepsOf(const WedgePhantom& phantom) {
    const auto count = static_cast<int64_t>(phantom.noise.size());
    const double range = phantom.levels.high - phantom.levels.low;
    std::vector<WedgeStep> steps;
    for (int64_t i = 0; i < count; ++i) {
        const auto left = static_cast<int32_t>(phantom.size.width * i / count);
        const auto right = static_cast<int32_t>(phantom.size.width * (i + 1) / count);
        const double share = count == 1 ? 0.0 : static_cast<double>(i) / static_cast<double>(count - 1);
        steps.push_back({left, right - left, std::floor(phantom.levels.low + range * share + 0.5),
                         phantom.noise[static_cast<size_t>(i)]});
    }
    return steps;
}

Frame MakeWedgePhantom(const WedgePhantom& phantom) {
    const std::vector<WedgeStep> steps = WedgeStepsOf(phantom);
    PhantomRandom random(StirBits(phantom.levels.seed, kStream, 0));
    Frame frame{phantom.size.width, phantom.size.height, {}};
    frame.pixels.reserve(PixelCount(frame.width, frame.height));
    for (int32_t y = 0; y < frame.height; ++y)
        for (const WedgeStep& step : steps)
            for (int32_t x = 0; x < step.width; ++x)
                frame.pixels.push_back(NoisyPixel(step.level, step.noise, phantom.levels.topLevel, random));
    return frame;
}

}  // namespace vastrelline
