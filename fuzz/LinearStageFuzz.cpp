// SPDX-License-Identifier: Apache-2.0

// The cores of the linear stage on a small frame with parameters from anywhere. The input's head is the
// frame, its tail picks size and options, so that a change of the options leaves the pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <span>
#include <vector>

#include "operators/curves/LinearCurve.h"
#include "stages/linear/LinearStage.h"
#include "stages/linear/WindowCurve.h"
#include "support/EverySet.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    int32_t outputRange;
    int32_t limitBin;
    int32_t mode;
    int32_t windowWidth;
    int32_t centre;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 24;
    constexpr int32_t kMostBits = 20;  // each bit more doubles the time and tells nothing new
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    const uint8_t choice = tail.Take<uint8_t>();
    options.maxValue = tail.Take<int32_t>() & ((1 << (choice / 4 % (kMostBits + 1))) - 1);
    options.outputRange = choice % 2 == 0 ? tail.Take<uint16_t>() : tail.Take<int32_t>();
    options.limitBin = choice / 2 % 2 == 0 ? tail.Take<int8_t>() : tail.Take<int32_t>();
    options.mode = tail.Take<uint8_t>() % 3;
    options.windowWidth = choice / 2 % 2 == 0 ? tail.Take<uint16_t>() : tail.Take<int32_t>();
    options.centre = choice / 2 % 2 == 0 ? tail.Take<int16_t>() : tail.Take<int32_t>();
    return options;
}

void RequireMapped(const std::vector<uint16_t>& pixels, std::span<const uint16_t> table,
                   const std::vector<uint16_t>& result) {
    for (size_t i = 0; i < pixels.size(); ++i)
        Require(result[i] == table[std::min<size_t>(pixels[i], table.size() - 1)],
                "each pixel takes the entry at its level");
}

// The top of the ramp as mode 1 has it, found by sorting: the level that more pixels than the limit reach.
int32_t RampEndByCount(const std::vector<uint16_t>& pixels, const Options& options) {
    if (options.limitBin < 0 && options.maxValue >= 1) return options.maxValue;
    std::vector<uint16_t> levels;
    for (const uint16_t pixel : pixels)
        if (pixel >= 1 && pixel <= options.maxValue) levels.push_back(pixel);
    std::sort(levels.begin(), levels.end(), std::greater<>());
    const auto place = static_cast<size_t>(std::max(options.limitBin, 0));
    return place < levels.size() ? levels[place] : -1;
}

void TestLinear(std::vector<uint16_t> pixels, const Options& o) {
    const std::vector<uint16_t> table =
        BuildLinearCurve(pixels.data(), o.width, o.height, o.maxValue, o.outputRange, o.limitBin, o.mode);
    constexpr int32_t kTopPixel = std::numeric_limits<uint16_t>::max();
    Require(table.size() == static_cast<size_t>(std::min(o.maxValue, kTopPixel)) + 1,
            "one entry for each level that a pixel can have");
    if (o.outputRange <= kTopPixel) {
        Require(std::is_sorted(table.begin(), table.end()), "the ramp rises");
        Require(table.back() <= std::max(o.outputRange, 0), "the ramp keeps the output's range");
        if (o.maxValue <= kTopPixel)
            Require(table.back() == std::max(o.outputRange, 0) || table.back() == 0,
                    "the ramp ends at the top, or there is none");
    }
    if (o.mode == 1) {
        const double end = RampEndByCount(pixels, o);
        for (size_t level = 0; level < table.size(); ++level)
            Require(table[level] == RampEntry(o.outputRange, static_cast<double>(level) / end),
                    "the ramp ends where so many pixels are brighter");
    }
    const std::vector<uint16_t> before = pixels;
    ApplyLinearCurve(pixels.data(), o.width, o.height, o.maxValue, o.outputRange, o.limitBin, o.mode, 0, L"",
                     0);
    RequireMapped(before, table, pixels);
    std::vector<uint16_t> backwards = Backwards(before);
    ApplyLinearCurve(backwards.data(), o.width, o.height, o.maxValue, o.outputRange, o.limitBin, o.mode, 0,
                     L"", 0);
    Require(Backwards(backwards) == pixels, "the places of the pixels make no difference");
}

void TestWindow(std::vector<uint16_t> pixels, const Options& o) {
    const WindowCurve curve =
        BuildWindowCurve(pixels.data(), o.width, o.height, o.windowWidth, o.centre, o.outputRange);
    const bool isOrdinary = o.windowWidth > 0 && o.windowWidth <= 1 << 20 && o.centre >= -(1 << 20) &&
                            o.centre <= 1 << 20 && o.outputRange <= 65535;
    if (isOrdinary) {
        Require(std::is_sorted(curve.table.begin(), curve.table.end()), "the ramp of a window rises");
        for (size_t level = 0; level < curve.table.size(); ++level)
            if (static_cast<int32_t>(level) > curve.highEdge)
                Require(curve.table[level] == std::max(o.outputRange, 0), "above the window lies the top");
    }
    const std::vector<uint16_t> before = pixels;
    ApplyWindowCurve(pixels.data(), o.width, o.height, o.windowWidth, o.centre, o.outputRange, 0, L"", 0);
    if (before.empty()) return;
    Require(curve.table.size() == *std::max_element(before.begin(), before.end()) + size_t{1},
            "the table ends with the brightest pixel");
    RequireMapped(before, curve.table, pixels);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    TestLinear(pixels, options);
    TestWindow(pixels, options);
    return 0;
}
