// The core of the gamma stage on a small frame with parameters from anywhere. The input's head is the frame,
// its tail picks size and options, so that a change of the options leaves the pixels where they are.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "image/PixelRange.h"
#include "tone/GammaCurve.h"

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

// The frame from the input's head; where the input is too short, pixels are 0.
std::vector<uint16_t> TakeFrame(const InputTail& tail, const Options& options) {
    std::vector<uint16_t> pixels(static_cast<size_t>(options.width) * static_cast<size_t>(options.height));
    const size_t bytes = std::min(tail.Size(), pixels.size() * sizeof(uint16_t));
    if (bytes > 0) std::memcpy(pixels.data(), tail.Data(), bytes);
    return pixels;
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
    const std::vector<uint16_t> pixels = TakeFrame(tail, options);
    TestChosenExponent(pixels, options);
    TestCurve(pixels, options, options.gamma);
    TestCurve(pixels, options,
              ChooseGamma(pixels.data(), options.width, options.height, options.outputRange, options.ratio));
    return 0;
}
