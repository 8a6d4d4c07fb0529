// SPDX-License-Identifier: Apache-2.0

// The passes of the Gaussian stage on a small frame with keys from anywhere: under every instruction set, and
// what holds for each result. The input's head is the frame, its tail picks size and keys, so that a change
// of the keys leaves the pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "stages/gaussian/GaussianPasses.h"
#include "support/EverySet.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    GaussianParams params;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 40;
    constexpr double kLargestSigma = 300;
    constexpr int32_t kMostPasses = 12;  // the first eight run without a look at what they changed
    constexpr int32_t kPastAnyFrame = 1 << 20;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.maxValue = tail.Take<uint16_t>();
    const uint8_t choice = tail.Take<uint8_t>();
    const double anySigma = tail.Take<double>();
    const double usualSigma = tail.Take<uint8_t>() / 32.0;
    options.params.GAUSSIAN_SIZE = choice % 2 == 0 ? usualSigma : anySigma;
    options.params.GAUSSIAN_REPEAT = tail.Take<int8_t>() % (kMostPasses + 1);
    const int32_t reduction = tail.Take<int32_t>();
    options.params.GAUSSIAN_ReduceTimeRatio = choice / 2 % 2 == 0 ? 1 : reduction % 6;
    if (choice / 8 % 8 == 0) options.params.GAUSSIAN_ReduceTimeRatio = reduction;
    options.params.GAUSSIAN_ProtectOutline = choice / 4 % 2;
    // What lies between costs memory and time, what lies beyond leaves the frame.
    int32_t& ratio = options.params.GAUSSIAN_ReduceTimeRatio;
    if (ratio > 8 && ratio < kPastAnyFrame) ratio = 8;
    if (options.params.GAUSSIAN_SIZE > kLargestSigma) options.params.GAUSSIAN_SIZE = kLargestSigma;
    return options;
}

std::vector<uint16_t> Smooth(std::vector<uint16_t> pixels, const Options& options,
                             const GaussianParams& params) {
    SmoothGaussian(pixels.data(), options.width, options.height, options.maxValue, params);
    return pixels;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    const std::vector<uint16_t> result =
        RequireEqualUnderEverySet([&] { return Smooth(pixels, options, options.params); });

    GaussianParams onePass = options.params;
    onePass.GAUSSIAN_REPEAT = 1;
    std::vector<uint16_t> passByPass = pixels;
    for (int32_t pass = 0; pass < options.params.GAUSSIAN_REPEAT; ++pass)
        passByPass = Smooth(passByPass, options, onePass);
    Require(result == passByPass, "passes left out would have changed nothing");
    const bool isLimited =
        std::all_of(result.begin(), result.end(), [&](uint16_t pixel) { return pixel <= options.maxValue; });
    Require(isLimited || result == pixels, "a filtered frame keeps its limit");
    return 0;
}
