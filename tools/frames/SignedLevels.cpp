// SPDX-License-Identifier: Apache-2.0
#include "frames/SignedLevels.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace vastrelline {
namespace {

constexpr int32_t kMiddle = 128;
constexpr int32_t kAround = 127;  // as far up as down
constexpr size_t kMostDistance = 32768;

}  // namespace

int32_t FindReach(std::span<const int16_t> levels) {
    constexpr size_t kParts = 1000;
    constexpr size_t kShown = 995;
    std::vector<size_t> counts(kMostDistance + 1);
    for (const int16_t level : levels) ++counts[static_cast<size_t>(std::abs(int32_t{level}))];
    size_t seen = 0;
    size_t reach = 0;
    while (reach < kMostDistance && (seen += counts[reach]) * kParts < levels.size() * kShown) ++reach;
    return std::max<int32_t>(1, static_cast<int32_t>(reach));
}

std::vector<uint8_t> RenderSigned(std::span<const int16_t> levels, int32_t reach) {
    std::vector<uint8_t> picture;
    picture.reserve(levels.size());
    for (const int16_t level : levels) {
        const int32_t limited = std::clamp(int32_t{level}, -reach, reach);
        const int32_t steps = (2 * std::abs(limited) * kAround + reach) / (2 * reach);
        picture.push_back(static_cast<uint8_t>(kMiddle + (limited < 0 ? -steps : steps)));
    }
    return picture;
}

}  // namespace vastrelline
