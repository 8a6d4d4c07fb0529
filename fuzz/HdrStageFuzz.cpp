// SPDX-License-Identifier: Apache-2.0

// The core of the HDR stage on a small frame with parameters from anywhere. The input's head is the frame,
// its tail picks size and options, so that a change of the options leaves the pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "operators/histogram/PixelRange.h"
#include "platform/InstructionSet.h"
#include "stages/hdr/HdrFrame.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    int32_t blockSize;
    int32_t bins;
    double clipLimit;
    int32_t edgeMax;
    int32_t edgeOffset;
    float maxLambda;
    float wfSlope;
    float alphaNorm;
    float alphaHe;
    int32_t layerStep;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 176;  // from 160 on the wide blur goes down to fewer rows
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.maxValue = tail.Take<uint16_t>();
    // Most sizes of 32 bits are far beyond the frame; those about its own are more telling.
    options.blockSize = tail.Take<uint8_t>() % 2 == 0 ? tail.Take<uint8_t>() : tail.Take<int32_t>();
    options.bins = tail.Take<uint8_t>() % 2 == 0 ? tail.Take<uint8_t>() : tail.Take<int32_t>();
    options.clipLimit = tail.Take<double>();
    options.edgeMax = tail.Take<int32_t>();
    options.edgeOffset = tail.Take<int32_t>();
    options.maxLambda = tail.Take<float>();
    options.wfSlope = tail.Take<float>();
    options.alphaNorm = tail.Take<float>();
    options.alphaHe = tail.Take<float>();
    options.layerStep = tail.Take<int32_t>();
    return options;
}

// The frame from the input's head, clamped to the largest value as the stage may ask; where the input is too
// short, pixels repeat what there is.
std::vector<uint16_t> TakeFrame(const InputTail& tail, const Options& options) {
    std::vector<uint16_t> pixels(static_cast<size_t>(options.width) * static_cast<size_t>(options.height));
    for (size_t i = 0; i < pixels.size() && tail.Size() > 1; ++i) {
        const size_t place = 2 * i % (tail.Size() - 1);
        const int32_t pixel = tail.Data()[place] + 256 * tail.Data()[place + 1];
        pixels[i] = static_cast<uint16_t>(std::min(pixel, options.maxValue));
    }
    return pixels;
}

std::vector<uint16_t> Process(std::vector<uint16_t> pixels, const Options& o, InstructionSet set) {
    const ScopedInstructionSet limit(set);
    HdrFrame(pixels.data(), o.width, o.height, o.maxValue, o.blockSize, o.bins, o.clipLimit, o.edgeMax,
             o.edgeOffset, o.maxLambda, o.wfSlope, o.alphaNorm, o.alphaHe, o.layerStep);
    return pixels;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> pixels = TakeFrame(tail, options);
    const std::vector<uint16_t> processed = Process(pixels, options, InstructionSet::Avx512);
    const auto lowest = [&](const std::vector<uint16_t>& frame) {
        return MinPixel(frame.data(), options.width, options.height);
    };
    const auto highest = [&](const std::vector<uint16_t>& frame) {
        return MaxPixel(frame.data(), options.width, options.height);
    };
    Require(lowest(processed) >= lowest(pixels), "no pixel below the frame's smallest");
    Require(highest(processed) <= highest(pixels), "no pixel above the frame's largest");
    Require(processed == Process(pixels, options, InstructionSet::Reference), "the reference gives the same");
    return 0;
}
