// SPDX-License-Identifier: Apache-2.0

// The core of the gamma stage on a small frame with parameters from anywhere. The input's head is the frame,
// its tail picks size and options, so that a change of the options leaves the pixels where they are.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "operators/curves/GammaCurve.h"
#include "operators/histogram/PixelRange.h"
#include "stages/gamma/GammaStage.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    int32_t outputRange;
    double ratio;
    double gamma;
    int32_t limitBin;
    int32_t inverse;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 24;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.maxValue = tail.Take<uint16_t>();
    options.outputRange = tail.Take<int32_t>();
    options.ratio = tail.Take<double>();
    options.gamma = tail.Take<double>();
    options.limitBin = tail.Take<int16_t>();
    options.inverse = tail.Take<uint8_t>() % 2;
    // Ranges beside the table's own are more telling than most of 2^32, and short tables are faster.
    const uint8_t choice = tail.Take<uint8_t>();
    options.maxValue >>= choice / 2 % 12;
    if (choice % 2 == 0) options.outputRange = options.maxValue;
    return options;
}

void TestChosenExponent(const std::vector<uint16_t>& pixels, const Options& options) {
    const double gamma =
        ChooseGamma(pixels.data(), options.width, options.height, options.outputRange, options.ratio);
    if (std::fabs(options.ratio) >= 1) {
        Require(gamma == options.ratio, "a ratio of magnitude 1 or more is the exponent");
    } else if (options.outputRange == 0) {
        Require(std::isnan(gamma), "without a range there is no exponent");
    } else {
        Require(gamma >= 1 && gamma <= 2, "a derived exponent lies between 1 and 2");
    }
}

void TestCurve(std::vector<uint16_t> pixels, const Options& options, double gamma) {
    const GammaCurve curve = BuildGammaCurve(pixels.data(), options.width, options.height, options.maxValue,
                                             options.outputRange, gamma, options.limitBin, options.inverse);
    Require(curve.table.size() == static_cast<size_t>(options.maxValue) + 1, "one entry for each level");
    if (!pixels.empty()) {
        Require(curve.low >= MinPixel(pixels.data(), options.width, options.height), "low is in the frame");
        Require(curve.high <= MaxPixel(pixels.data(), options.width, options.height), "high is in the frame");
    }
    std::vector<uint16_t> expected;
    expected.reserve(pixels.size());
    for (const uint16_t pixel : pixels)
        expected.push_back(curve.table[std::min<size_t>(pixel, curve.table.size() - 1)]);
    ApplyGammaCurve(pixels.data(), options.width, options.height, options.maxValue, options.outputRange,
                    gamma, options.limitBin, options.inverse, 0, L"", 0);
    Require(pixels == expected, "each pixel takes the entry at its level");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    TestChosenExponent(pixels, options);
    TestCurve(pixels, options, options.gamma);
    TestCurve(pixels, options,
              ChooseGamma(pixels.data(), options.width, options.height, options.outputRange, options.ratio));
    return 0;
}
