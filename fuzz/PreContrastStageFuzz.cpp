// SPDX-License-Identifier: Apache-2.0

// The core of the pre-contrast stage on a small frame with parameters from anywhere. The input's head is the
// frame, its tail picks size and options, so that a change of the options leaves the pixels where they are.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "stages/pre_contrast/PreContrast.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    PreContrastParams params;
};

// Kernels and extended frames of up to 2^29 pixels are allowed, but too slow to be of use here. What is far
// beyond them is refused at once, and stays.
double KeepFast(double value, double largest) {
    constexpr double kRefused = 1e9;
    return std::fabs(value) > largest && std::fabs(value) < kRefused ? std::fmod(value, largest) : value;
}

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 24;
    constexpr double kLargestSigma = 40.0;
    constexpr double kLargestRescale = 64.0;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.maxValue = tail.Take<uint16_t>();
    options.params.PRECONTRAST_MASK = KeepFast(tail.Take<double>(), kLargestSigma);
    options.params.PRECONTRAST_RATIO = tail.Take<double>();
    options.params.PRECONTRAST_RESCALE = KeepFast(tail.Take<double>(), kLargestRescale);
    return options;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> image = tail.TakeFrame(options.width, options.height);
    std::vector<uint16_t> result = image;
    const ScratchVector<uint16_t> smoothed =
        ApplyPreContrast(result.data(), options.width, options.height, options.maxValue, options.params);
    Require(smoothed.size() == image.size(), "the smoothed frame has the size of the frame");
    for (const uint16_t pixel : result)
        Require(pixel <= options.maxValue, "no pixel passes the largest value");
    return 0;
}
