// SPDX-License-Identifier: Apache-2.0

// The cores of the adaptive smoothing stage on a small frame with parameters from anywhere. The input's head
// is the frame, its tail picks size and options, so that a change of the options leaves the pixels where they
// are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "stages/adaptive_smoothing/DeviationSmooth.h"
#include "stages/adaptive_smoothing/LocalDeviation.h"
#include "stages/adaptive_smoothing/SavgolKernel.h"
#include "stages/adaptive_smoothing/SavgolSmooth.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    int32_t mask;
    int32_t order;
    double sigma;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 24;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.maxValue = tail.Take<uint16_t>();
    options.mask = tail.Take<int32_t>();
    options.order = tail.Take<int32_t>();
    options.sigma = tail.Take<double>();
    // Most of 2^32 masks are refused; those that a frame might be given are more telling.
    const uint8_t choice = tail.Take<uint8_t>();
    if (choice % 2 == 0) options.mask &= 63;
    if (choice / 2 % 2 == 0) options.order &= 31;
    return options;
}

void TestSavgol(std::vector<uint16_t> pixels, const Options& options) {
    const std::vector<uint16_t> before = pixels;
    SavgolSmooth(pixels.data(), options.width, options.height, options.maxValue, options.mask, options.order);
    const bool isLimited =
        std::all_of(pixels.begin(), pixels.end(), [&](uint16_t pixel) { return pixel <= options.maxValue; });
    Require(isLimited || pixels == before, "a filtered frame keeps its limit");
    if (options.mask < 2) Require(pixels == before, "a mask below 2 filters nothing");
}

void TestDeviation(std::vector<uint16_t> pixels, const Options& options) {
    const std::vector<double> map =
        LocalDeviationMap(pixels.data(), options.width, options.height, kDeviationRadius);
    Require(std::all_of(map.begin(), map.end(), [](double weight) { return weight >= 0 && weight <= 1; }),
            "weights lie between 0 and 1");
    DeviationWeightedSmooth(pixels.data(), options.width, options.height, options.maxValue, options.sigma,
                            options.order);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    TestSavgol(pixels, options);
    TestDeviation(pixels, options);
    return 0;
}
