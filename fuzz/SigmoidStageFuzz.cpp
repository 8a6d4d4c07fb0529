// SPDX-License-Identifier: Apache-2.0

// The core of the sigmoid stage on a small frame with parameters from anywhere. The input's head is the
// frame, its tail picks size and options.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "stages/sigmoid/SigmoidCurve.h"
#include "stages/sigmoid/SigmoidStage.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    int32_t outputRange;
    double ratio;
    int32_t limitBin;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 24;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.maxValue = tail.Take<uint16_t>();
    options.outputRange = tail.Take<int32_t>();
    options.ratio = tail.Take<double>();
    options.limitBin = tail.Take<int16_t>();
    // Short tables are faster, and more telling on few pixels.
    const uint8_t choice = tail.Take<uint8_t>();
    options.maxValue >>= choice / 2 % 12;
    if (choice % 2 == 0) options.outputRange = options.maxValue;
    return options;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    const std::vector<uint16_t> table =
        BuildSigmoidCurve(pixels.data(), options.width, options.height, options.maxValue, options.outputRange,
                          options.ratio, options.limitBin);
    Require(table.size() == static_cast<size_t>(options.maxValue) + 1, "one entry for each level");
    // With a width the curve ends at the output's top; without one it is 0 everywhere. Beyond 16 bits,
    // headroom included, its entries keep the low bits only.
    constexpr int32_t kLargestWhole = 65535 - 1500;
    if (options.outputRange >= 0 && options.outputRange <= kLargestWhole) {
        Require(table.back() == options.outputRange || table.back() == 0, "the curve ends at the top");
        if (options.ratio == 0.0) Require(std::is_sorted(table.begin(), table.end()), "the curve rises");
    }
    std::vector<uint16_t> expected;
    expected.reserve(pixels.size());
    for (const uint16_t pixel : pixels) expected.push_back(table[std::min<size_t>(pixel, table.size() - 1)]);
    ApplySigmoidCurve(pixels.data(), options.width, options.height, options.maxValue, options.outputRange,
                      options.ratio, options.limitBin, 0, L"", 0);
    Require(pixels == expected, "each pixel takes the entry at its level");
    return 0;
}
