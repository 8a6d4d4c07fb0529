// SPDX-License-Identifier: Apache-2.0

// The cores of the inversion on a small frame with parameters from anywhere. The input's head is the frame,
// its tail picks size and options, so that a change of the options leaves the pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "stages/inversion/InversionStage.h"
#include "stages/inversion/InvertPixels.h"
#include "stages/inversion/LogCurve.h"
#include "support/EverySet.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    double ratio;
    int32_t inverse;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 24;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.maxValue = tail.Take<int32_t>();
    const uint8_t choice = tail.Take<uint8_t>();
    if (choice % 2 == 0) options.maxValue &= 0xFFFF;
    options.inverse = choice / 2 % 2;
    options.ratio = choice / 4 % 2 == 0 ? tail.Take<uint16_t>() / 256.0 : tail.Take<double>();
    return options;
}

void TestInvert(const std::vector<uint16_t>& pixels, const Options& options) {
    std::vector<uint16_t> inverted = pixels;
    InvertPixels(inverted.data(), options.width, options.height, options.maxValue);
    for (size_t i = 0; i < pixels.size(); ++i)
        Require(static_cast<uint16_t>(inverted[i] + pixels[i]) == static_cast<uint16_t>(options.maxValue),
                "a pixel and its inverse add up to the top");
    InvertPixels(inverted.data(), options.width, options.height, options.maxValue);
    Require(inverted == pixels, "the inverse of the inverse is the frame");
}

void TestCurve(const std::vector<uint16_t>& pixels, const Options& o) {
    constexpr double kUsualRatio = 1000;
    const LogCurve curve = BuildLogCurve(pixels.data(), o.width, o.height, o.ratio, o.inverse);
    if (pixels.empty()) return;
    const auto [low, high] = std::minmax_element(pixels.begin(), pixels.end());
    Require(curve.minLevel == *low, "the curve begins at the lowest level");
    Require(curve.table.size() == static_cast<size_t>(*high - *low) + 1, "and ends at the highest");
    if (o.ratio >= 0 && o.ratio <= kUsualRatio) {
        // Inverted, the lowest level may come out one above 16 bits.
        if (o.inverse == 0)
            Require(std::is_sorted(curve.table.begin(), curve.table.end()), "the curve rises");
        else if (*high < 65535)
            Require(std::is_sorted(curve.table.begin(), curve.table.end(), std::greater<>()),
                    "the inverted curve falls");
        if (o.inverse == 0) Require(curve.table.front() == *low, "the lowest level stays");
    }

    std::vector<uint16_t> mapped = pixels;
    ApplyLogCurve(mapped.data(), o.width, o.height, o.ratio, o.inverse, 0, L"", 0);
    for (size_t i = 0; i < pixels.size(); ++i)
        Require(mapped[i] == curve.table[static_cast<size_t>(pixels[i] - curve.minLevel)],
                "each pixel takes the entry at its level");
    std::vector<uint16_t> fixed = pixels;
    ApplyFixedLogCurve(fixed.data(), o.width, o.height, o.ratio, o.inverse);
    Require(fixed == mapped, "both chains have one curve");
    std::vector<uint16_t> backwards = Backwards(pixels);
    ApplyLogCurve(backwards.data(), o.width, o.height, o.ratio, o.inverse, 0, L"", 0);
    Require(Backwards(backwards) == mapped, "the places of the pixels make no difference");
}

// A frame whose levels the curve does not know all.
void TestForeignFrame(const std::vector<uint16_t>& pixels, const Options& o) {
    const int32_t firstRows = o.height / 2;
    const LogCurve curve = BuildLogCurve(pixels.data(), o.width, firstRows, o.ratio, o.inverse);
    if (curve.table.empty()) return;
    std::vector<uint16_t> mapped = pixels;
    ApplyLogTable(mapped.data(), o.width, o.height, curve);
    for (size_t i = 0; i < pixels.size(); ++i) {
        if (pixels[i] <= curve.minLevel)
            Require(mapped[i] == curve.table.front(), "below the curve lies its first entry");
        else if (static_cast<size_t>(pixels[i] - curve.minLevel) >= curve.table.size())
            Require(mapped[i] == curve.table.back(), "above the curve lies its last entry");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    TestInvert(pixels, options);
    TestCurve(pixels, options);
    TestForeignFrame(pixels, options);
    return 0;
}
