// SPDX-License-Identifier: Apache-2.0

// The cores of the stretch stage on a small frame with parameters from anywhere. The input's head is the
// frame, its tail picks size and options, so that a change of the options leaves the pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "operators/curves/LinearCurve.h"
#include "operators/curves/LookupTable.h"
#include "operators/curves/StretchCurve.h"
#include "operators/curves/TonedFrame.h"
#include "stages/stretch/HistogramSegments.h"
#include "stages/stretch/StretchParams.h"
#include "stages/stretch/StretchSegments.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    StretchParams params;
    bool isFixed;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 24;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.maxValue = tail.Take<uint16_t>();
    const uint8_t choice = tail.Take<uint8_t>();
    options.maxValue >>= choice / 2 % 12;
    options.isFixed = choice % 2 != 0;
    options.params.STRETCH_SEPARATION_CNT = tail.Take<uint8_t>() % 6;
    options.params.RESTRETCH_OPTION = tail.Take<uint8_t>() % 3;
    options.params.LEFT_LEN_LIMIT = tail.Take<int32_t>();
    options.params.RIGHT_LEN_LIMIT = tail.Take<int32_t>();
    options.params.STRETCH_LEFT_WEIGHT = tail.Take<double>();
    options.params.STRETCH_RIGHT_WEIGHT = tail.Take<double>();
    options.params.STRETCH_LIMITBIN = tail.Take<int32_t>();
    return options;
}

StretchFunction BuildCurve(TonedFrame& plan, const Options& options) {
    if (options.params.STRETCH_SEPARATION_CNT > static_cast<int32_t>(StretchMode::BothValleys))
        return BuildPercentCurve(plan, options.maxValue, options.params);
    const SegmentCurve curve = options.isFixed
                                   ? BuildFixedSegmentCurve(plan, options.maxValue, options.params)
                                   : BuildSegmentCurve(plan, options.maxValue, options.params);
    std::vector<uint16_t> mask(plan.Count());
    MarkDarkTail(plan.Read().begin(), mask.data(), options.width, options.height, curve.segment.left);
    for (size_t i = 0; i < mask.size(); ++i)
        Require((mask[i] == 255) == (plan.Read().begin()[i] < curve.segment.left),
                "the mask marks what lies below the valley");
    return curve.curve;
}

// The second step on the pixels themselves.
void Restretch(std::vector<uint16_t>& pixels, const Options& options) {
    if (options.params.RESTRETCH_OPTION == 2) {
        ApplyLookupTable(pixels.data(), options.width, options.height,
                         BuildLinearCurve(pixels.data(), options.width, options.height, options.maxValue,
                                          options.maxValue, 0, 0));
    } else if (options.params.RESTRETCH_OPTION == 1 && !pixels.empty()) {
        const uint16_t lowest = *std::min_element(pixels.begin(), pixels.end());
        for (uint16_t& pixel : pixels) pixel = static_cast<uint16_t>(pixel - lowest);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    std::vector<uint16_t> expected = pixels;

    TonedFrame plan({pixels.data(), options.width, options.height});
    const StretchFunction curve = BuildCurve(plan, options);
    AddStretchCurve(plan, options.maxValue, curve);
    AddRestretch(plan, options.maxValue, options.params.RESTRETCH_OPTION);
    plan.Read();

    for (uint16_t& pixel : expected)
        pixel = static_cast<uint16_t>(curve(std::min<int32_t>(pixel, options.maxValue)) & 0xFFFF);
    Restretch(expected, options);
    Require(pixels == expected, "planned curves are the curves one after the other");
    return 0;
}
