// SPDX-License-Identifier: Apache-2.0

// The separable filters on a small frame with a kernel from anywhere: every form of each list against its
// definition. The input's head is the frame, its tail picks size, kernel and edges, so that a change of these
// leaves the pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "operators/separable/HalvingFilter.h"
#include "operators/separable/RowFilter.h"
#include "operators/separable/SeparableFilter.h"
#include "support/EqualForms.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    EdgeRule edges;
    std::vector<double> kernel;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestWidth = 140;  // past the widest block of a row
    constexpr uint8_t kLargestHeight = 24;
    constexpr uint8_t kMostTaps = 20;
    Options options{};
    options.width = tail.Take<uint8_t>() % kLargestWidth + 1;
    options.height = tail.Take<uint8_t>() % kLargestHeight + 1;
    options.kernel.resize(size_t{tail.Take<uint8_t>()} % kMostTaps + 1);
    const uint8_t choice = tail.Take<uint8_t>();
    options.edges = choice % 2 == 0 ? EdgeRule::Wrap : EdgeRule::Replicate;
    options.maxValue = choice / 2 % 4 == 0 ? tail.Take<int32_t>() : tail.Take<uint16_t>();
    // Taps of eight bytes are mostly beyond any pixel or next to nothing; shares of the sum are more telling.
    for (double& tap : options.kernel) {
        tap = choice < 64 ? tail.Take<double>()
                          : tail.Take<int16_t>() / (4096.0 * static_cast<double>(options.kernel.size()));
    }
    return options;
}

void TestFilter(const std::vector<uint16_t>& pixels, const Options& o) {
    RequireEqualForms(FilterVariants(), [&](const FilterVariant& form) {
        Guarded<uint16_t> frame(pixels);
        form.run({frame.Data(), o.width, o.height, o.maxValue, o.kernel, o.edges});
        return frame;
    });
}

// The rows are made anew each time, in a place that is not theirs for long.
void TestRowFilter(const std::vector<uint16_t>& pixels, const Options& o) {
    const auto width = static_cast<size_t>(o.width);
    RequireEqualForms(RowFilterVariants(), [&](const RowFilterVariant& form) {
        Guarded<uint16_t> result(pixels.size());
        std::vector<uint16_t> place;
        int32_t next = 0;
        const auto sourceRow = [&](int32_t y) {
            Require(y >= 0 && y < o.height, "rows are asked for inside the frame");
            const auto first = pixels.begin() + static_cast<ptrdiff_t>(static_cast<size_t>(y) * width);
            place.assign(first, first + o.width);
            return place.data();
        };
        const auto takeRow = [&](int32_t y, const uint16_t* row) {
            Require(y == next++, "rows come once each, from the top");
            std::copy_n(row, width, result.Data() + static_cast<size_t>(y) * width);
        };
        form.run({o.width, o.height, o.maxValue, o.kernel, o.edges, sourceRow, takeRow});
        Require(next == o.height, "all rows come");
        return result;
    });
}

void TestHalving(const std::vector<uint16_t>& pixels, const Options& o) {
    if (o.width < 2 || o.height < 2) return;
    RequireEqualForms(HalvingVariants(), [&](const HalvingVariant& form) {
        Guarded<uint16_t> result(static_cast<size_t>(o.width / 2) * static_cast<size_t>(o.height / 2));
        form.run({pixels.data(), o.width, o.height, o.maxValue, o.kernel, o.edges, result.Data()});
        return result;
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    TestFilter(pixels, options);
    TestRowFilter(pixels, options);
    TestHalving(pixels, options);
    return 0;
}
