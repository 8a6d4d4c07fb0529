// SPDX-License-Identifier: Apache-2.0
#include "frames/FrameDifference.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdlib>
#include <utility>

namespace vastrelline {
namespace {

constexpr size_t kShownDifferences = 10;
constexpr size_t kLevels = 65536;
constexpr int64_t kParts = 8;  // along each side

// The first places of each part of the frame.
class Parts {
public:
    Parts(int32_t width, int32_t height) : width_(width), height_(height) {}

    void Add(const PixelDifference& place) {
        std::vector<PixelDifference>& part = parts_[IndexOf(place)];
        if (part.size() < kShownDifferences) part.push_back(place);
    }

    // In each round the next place of every part, or, where the last round has too many, evenly chosen ones.
    std::vector<PixelDifference> Spread() const {
        std::vector<PixelDifference> chosen;
        for (size_t round = 0; round < kShownDifferences && chosen.size() < kShownDifferences; ++round) {
            std::vector<PixelDifference> next;
            for (const std::vector<PixelDifference>& part : parts_)
                if (round < part.size()) next.push_back(part[round]);
            const size_t taken = std::min(next.size(), kShownDifferences - chosen.size());
            for (size_t i = 0; i < taken; ++i)
                chosen.push_back(next[taken == 1 ? 0 : i * (next.size() - 1) / (taken - 1)]);
        }
        std::sort(chosen.begin(), chosen.end(), [](const PixelDifference& a, const PixelDifference& b) {
            return std::pair(a.y, a.x) < std::pair(b.y, b.x);
        });
        return chosen;
    }

private:
    size_t IndexOf(const PixelDifference& place) const {
        return static_cast<size_t>(place.y * kParts / height_ * kParts + place.x * kParts / width_);
    }

    int32_t width_;
    int32_t height_;
    std::array<std::vector<PixelDifference>, kParts * kParts> parts_;
};

}  // namespace

FrameDifference FindDifference(const Frame& first, const Frame& second) {
    assert(first.width == second.width && first.height == second.height);
    FrameDifference difference;
    difference.bySize.resize(kLevels);
    Parts parts(first.width, first.height);
    size_t i = 0;
    for (int32_t y = 0; y < first.height; ++y) {
        for (int32_t x = 0; x < first.width; ++x, ++i) {
            const PixelDifference place{x, y, first.pixels[i], second.pixels[i]};
            const int32_t size = std::abs(int32_t{place.first} - int32_t{place.second});
            ++difference.bySize[static_cast<size_t>(size)];
            if (size == 0) continue;
            ++difference.count;
            if (size > difference.largest) {
                difference.largest = size;
                difference.largestOne = place;
            }
            parts.Add(place);
        }
    }
    difference.bySize.resize(static_cast<size_t>(difference.largest) + 1);
    difference.bySize.shrink_to_fit();
    difference.places = parts.Spread();
    return difference;
}

Frame AbsoluteDifference(const Frame& first, const Frame& second) {
    assert(first.width == second.width && first.height == second.height);
    Frame difference{first.width, first.height, std::vector<uint16_t>(first.pixels.size())};
    std::transform(first.pixels.begin(), first.pixels.end(), second.pixels.begin(), difference.pixels.begin(),
                   [](uint16_t a, uint16_t b) { return static_cast<uint16_t>(a > b ? a - b : b - a); });
    return difference;
}

}  // namespace vastrelline
