#include "frames/FrameDifference.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>

namespace vastrelline {
namespace {

constexpr size_t kShownDifferences = 10;

}  // namespace

FrameDifference FindDifference(const Frame& first, const Frame& second) {
    assert(first.width == second.width && first.height == second.height);
    FrameDifference difference;
    size_t i = 0;
    for (int32_t y = 0; y < first.height; ++y) {
        for (int32_t x = 0; x < first.width; ++x, ++i) {
            const uint16_t a = first.pixels[i];
            const uint16_t b = second.pixels[i];
            if (a == b) continue;
            ++difference.count;
            difference.largest = std::max(difference.largest, std::abs(int32_t{a} - int32_t{b}));
            if (difference.firstOnes.size() < kShownDifferences) difference.firstOnes.push_back({x, y, a, b});
        }
    }
    return difference;
}

}  // namespace vastrelline
