// The core of the CLAHE stage on a small frame with keys from anywhere: every form against the reference, and
// what holds for each result. The input's head is the frame, its tail picks size and keys, so that a change
// of the keys leaves the pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "contrast/ClaheFrame.h"
#include "contrast/ClaheTiles.h"
#include "contrast/DarkArea.h"
#include "platform/InstructionSet.h"

namespace {

using namespace vastrelline;

// Says which promise does not hold and ends the run, in every build.
void Require(bool holds, const char* promise) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", promise);
    std::abort();
}

// Takes values off the end of the input; past its start they are zero.
class InputTail {
public:
    InputTail(const uint8_t* data, size_t size) : data_(data), size_(size) {}

    template <typename Value>
    Value Take() {
        Value value{};
        const size_t count = size_ < sizeof value ? size_ : sizeof value;
        size_ -= count;
        if (count > 0) std::memcpy(&value, data_ + size_, count);
        return value;
    }

    const uint8_t* Data() const { return data_; }
    size_t Size() const { return size_; }

private:
    const uint8_t* data_;
    size_t size_;
};

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

// The frame from the input's head; where the input is too short, pixels are 0.
std::vector<uint16_t> TakeFrame(const InputTail& tail, const Options& options) {
    std::vector<uint16_t> pixels(static_cast<size_t>(options.width) * static_cast<size_t>(options.height));
    const size_t bytes = std::min(tail.Size(), pixels.size() * sizeof(uint16_t));
    if (bytes > 0) std::memcpy(pixels.data(), tail.Data(), bytes);
    return pixels;
}

std::vector<uint16_t> Equalized(std::vector<uint16_t> pixels, const Options& options, InstructionSet set) {
    LimitInstructionSet(set);
    const int32_t code = ClaheFrame(pixels.data(), options.width, options.height, options.maxValue,
                                    options.blockSize, options.bins, options.maxSlope);
    Require(code == 1, "the answer is always 1");
    return pixels;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> pixels = TakeFrame(tail, options);
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
                "what is corrected is held to the range");
    }
    return 0;
}
