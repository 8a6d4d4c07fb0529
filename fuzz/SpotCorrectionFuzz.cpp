// SPDX-License-Identifier: Apache-2.0

// The correction of spots on a small frame with a window from anywhere: under every instruction set, and the
// means against the same written down plainly. The input's head is the frame, its tail picks size and window.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "sensor/SpotCorrection.h"
#include "support/EverySet.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maskSize;
};

std::vector<uint16_t> Correct(std::vector<uint16_t> pixels, const Options& o) {
    ApplySpotCorrection(pixels.data(), o.maskSize, o.width, o.height, 1.5F);
    return pixels;
}

void TestMeans(const std::vector<uint16_t>& pixels, const Options& o) {
    std::vector<uint16_t> means(pixels.size());
    SquareBoxMean(means.data(), pixels.data(), o.maskSize, o.width, o.height);
    const int64_t reach = o.maskSize / 2;
    for (int32_t y = 0; y < o.height; ++y) {
        for (int32_t x = 0; x < o.width; ++x) {
            const auto at = [&](int64_t column, int64_t row) {
                return pixels[static_cast<size_t>(row * o.width + column)];
            };
            const bool isInner =
                o.maskSize >= 1 && std::min(x, y) >= reach + 1 && x + reach < o.width && y + reach < o.height;
            uint64_t mean = at(x, y);
            if (isInner) {
                uint64_t sum = 0;
                for (int64_t row = y - reach; row <= y + reach; ++row)
                    for (int64_t column = x - reach; column <= x + reach; ++column) sum += at(column, row);
                mean = sum / static_cast<uint64_t>(int64_t{o.maskSize} * o.maskSize);
            }
            const auto place = static_cast<size_t>(y) * static_cast<size_t>(o.width) + static_cast<size_t>(x);
            Require(means[place] == static_cast<uint16_t>(mean), "each mean is that of its square");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr uint8_t kLargestSide = 32;
    InputTail tail(data, size);
    const int32_t width = tail.Take<uint8_t>() % (kLargestSide + 1);
    const int32_t height = tail.Take<uint8_t>() % (kLargestSide + 1);
    const bool isUsual = tail.Take<uint8_t>() % 4 != 0;
    const int32_t maskSize = isUsual ? tail.Take<uint8_t>() % 20 : tail.Take<int32_t>();
    // So many bits as the caller's frames have; few levels are more telling, too, and tables are smaller.
    const uint16_t bits = tail.Take<uint8_t>() % 17;
    const Options options{width, height, maskSize};
    std::vector<uint16_t> pixels = tail.TakeFrame(width, height);
    for (uint16_t& pixel : pixels) pixel = static_cast<uint16_t>(pixel & ((1U << bits) - 1U));

    TestMeans(pixels, options);
    const std::vector<uint16_t> result = RequireEqualUnderEverySet([&] { return Correct(pixels, options); });
    const uint16_t peak = pixels.empty() ? uint16_t{0} : *std::max_element(pixels.begin(), pixels.end());
    for (size_t i = 0; i < pixels.size(); ++i) {
        Require(pixels[i] != 0 || result[i] == 0, "black stays black");
        Require(pixels[i] != peak || result[i] == peak, "the brightest level stays");
        Require(result[i] <= peak, "no pixel is above the brightest");
    }
    if (peak <= 1) Require(result == pixels, "a frame without levels stays");

    std::vector<uint16_t> inverse(pixels.size());
    InvertToBuffer(pixels.data(), inverse.data(), peak, pixels.size());
    InvertToBuffer(inverse.data(), inverse.data(), peak, inverse.size());
    Require(inverse == pixels, "the inverse of the inverse is the frame");
    return 0;
}
