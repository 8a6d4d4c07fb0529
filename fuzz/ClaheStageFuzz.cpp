// SPDX-License-Identifier: Apache-2.0

// The core of the CLAHE stage on a small frame with keys from anywhere: every form against the reference, and
// what holds for each result. The input's head is the frame, its tail picks size and keys, so that a change
// of the keys leaves the pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "operators/tile_equalise/ClaheFrame.h"
#include "operators/tile_equalise/ClaheTiles.h"
#include "platform/InstructionSet.h"
#include "stages/clahe/DarkArea.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    int32_t blockSize;
    int32_t bins;
    double maxSlope;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 48;
    // Bins up to here take no time; those from the second number on are refused.
    constexpr int32_t kFewBins = 3000;
    constexpr int32_t kRefusedBins = 1 << 25;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.maxValue = tail.Take<uint16_t>();
    options.blockSize = tail.Take<int32_t>();
    options.bins = tail.Take<int32_t>();
    options.maxSlope = tail.Take<double>();
    // Small blocks are more telling than most of 2^32.
    if (tail.Take<uint8_t>() % 4 != 0) options.blockSize &= 31;
    if (options.bins > kFewBins && options.bins < kRefusedBins) options.bins %= kFewBins;
    return options;
}

std::vector<uint16_t> Equalized(std::vector<uint16_t> pixels, const Options& options, InstructionSet set) {
    const ScopedInstructionSet limit(set);
    const int32_t code = ClaheFrame(pixels.data(), options.width, options.height, options.maxValue,
                                    options.blockSize, options.bins, options.maxSlope);
    Require(code == 1, "the answer is always 1");
    return pixels;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    const std::vector<uint16_t> expected = Equalized(pixels, options, InstructionSet::Reference);
    for (const InstructionSet set : {InstructionSet::Baseline, InstructionSet::Avx2, InstructionSet::Avx512})
        Require(Equalized(pixels, options, set) == expected, "every form gives the reference bits");
    if (!pixels.empty()) {
        const auto [min, max] = std::minmax_element(pixels.begin(), pixels.end());
        const int32_t low = std::min<int32_t>(*min, options.maxValue);
        for (const uint16_t pixel : expected)
            Require(pixel >= low && pixel <= *max, "the result keeps the range of the frame");
    }
    std::vector<uint16_t> corrected = expected;
    CorrectDarkArea(corrected.data(), pixels.data(), options.width, options.height, options.maxValue);
    for (size_t i = 0; i < corrected.size(); ++i) {
        Require(corrected[i] == expected[i] || corrected[i] <= options.maxValue,
                "what is corrected is clamped to the range");
    }
    return 0;
}
