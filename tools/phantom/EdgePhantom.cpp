// SPDX-License-Identifier: Apache-2.0
#include "phantom/EdgePhantom.h"

#include "phantom/ExactTurn.h"

namespace vastrelline {
namespace {

constexpr int64_t kStream = 4;

}  // namespace

Frame MakeEdgePhantom(const EdgePhantom& phantom) {
    const BlurredStep step(phantom.angleDegrees, phantom.blurPixels);
    const double cosine = CosineOfTurns(phantom.angleDegrees / kDegreesOfTurn);
    const double sine = SineOfTurns(phantom.angleDegrees / kDegreesOfTurn);
    const double range = phantom.levels.high - phantom.levels.low;
    PhantomRandom random(StirBits(phantom.levels.seed, kStream, 0));
    Frame frame{phantom.size.width, phantom.size.height, {}};
    frame.pixels.reserve(PixelCount(frame.width, frame.height));
    for (int32_t y = 0; y < frame.height; ++y) {
        const double down = y + 0.5 - 0.5 * frame.height;
        for (int32_t x = 0; x < frame.width; ++x) {
            const double across = x + 0.5 - 0.5 * frame.width;
            const double level = phantom.levels.low + range * step.ShareAt(across * cosine - down * sine);
            frame.pixels.push_back(NoisyPixel(level, phantom.noise, phantom.levels.topLevel, random));
        }
    }
    return frame;
}

}  // namespace vastrelline
