// SPDX-License-Identifier: Apache-2.0
#include "phantom/KnownLevels.h"

#include <algorithm>

namespace vastrelline {

uint16_t NoisyPixel(double level, double sigma, int32_t topLevel, PhantomRandom& random) {
    const double noisy = sigma > 0.0 ? level + sigma * random.Normal() : level;
    return static_cast<uint16_t>(std::clamp(noisy + 0.5, 0.0, static_cast<double>(topLevel)));
}

}  // namespace vastrelline
