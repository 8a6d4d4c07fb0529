// SPDX-License-Identifier: Apache-2.0

// The methods of the adaptive unsharp stage on a small frame with parameters from anywhere. The input's head
// is the frame, its tail picks size, method and parameters, so that a change of these leaves the pixels where
// they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "stages/adaptive_unsharp/ActivityWeightedUnsharp.h"
#include "stages/adaptive_unsharp/BandDifferenceUnsharp.h"
#include "stages/adaptive_unsharp/EdgeWeightedUnsharp.h"
#include "stages/adaptive_unsharp/HistogramShapedUnsharp.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    int32_t mode;
    double sigma;
    double ratio;
    int32_t noise;
    int32_t reduce;
    int32_t protect;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 24;
    constexpr double kLargestSigma = 1000;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.maxValue = tail.Take<uint16_t>();
    options.mode = tail.Take<uint8_t>() % 8;
    options.sigma = tail.Take<double>();
    options.ratio = tail.Take<double>();
    options.noise = tail.Take<int32_t>();
    options.reduce = tail.Take<int32_t>();
    options.protect = tail.Take<int32_t>();
    // Small numbers are more telling than most of 2^32, and a wide kernel takes too long for a fuzzer.
    const uint8_t choice = tail.Take<uint8_t>();
    if (choice % 2 == 0) options.noise %= 200;
    if (choice / 2 % 2 == 0) options.reduce %= 8;
    if (options.mode != 5 && options.sigma > kLargestSigma) options.sigma = kLargestSigma;
    // Those between cost memory and time, those beyond leave the frame.
    constexpr int32_t kPastAnyFrame = 1 << 20;
    if (options.mode != 5 && options.reduce > 8 && options.reduce < kPastAnyFrame) options.reduce = 8;
    return options;
}

void TestMethod(std::vector<uint16_t> pixels, const Options& o) {
    const std::vector<uint16_t> before = pixels;
    std::vector<uint16_t> mask(pixels.size());
    for (size_t i = 0; i < mask.size(); i += 2) mask[i] = 255;
    switch (o.mode) {
        case 1:
            EdgeWeightedUnsharp(pixels.data(), o.width, o.height, o.maxValue, o.sigma, o.ratio, o.noise,
                                o.reduce);
            break;
        case 4:
            BandDifferenceUnsharp(pixels.data(), o.width, o.height, o.maxValue, o.sigma, o.ratio,
                                  o.noise * 0.01, o.reduce);
            for (size_t i = 0; i < pixels.size(); ++i)
                Require(pixels[i] == std::min<int32_t>(before[i], o.maxValue), "mode 4 only limits");
            break;
        case 5:
            ActivityWeightedUnsharp(pixels.data(), o.width, o.height, o.maxValue, o.noise, o.reduce,
                                    o.protect, o.sigma, o.ratio);
            break;
        default:
            HistogramShapedUnsharp(pixels.data(), o.width, o.height, o.maxValue, o.sigma, o.ratio, o.noise,
                                   o.mode == 3 ? nullptr : mask.data());
    }
    for (const uint16_t pixel : pixels) Require(pixel <= o.maxValue, "no pixel is above the limit");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    TestMethod(pixels, options);
    return 0;
}
