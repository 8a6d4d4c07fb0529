// SPDX-License-Identifier: Apache-2.0

// The loops over a band of the pyramid with values from anywhere: every form of each against the definition.
// The input's head are a level and the one drawn large from below it, its tail picks the rest, so that a
// change of that leaves the values where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "stages/pyramid/BandKernels.h"
#include "support/EqualForms.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Input {
    std::vector<uint16_t> level;
    std::vector<uint16_t> coarse;
    std::vector<int16_t> band;  // the level's bits with a sign
    BandRange start;
    int32_t maxValue;
};

void TestSubtract(const Input& input) {
    RequireEqualForms(BandVariants(), [&](const BandVariant& form) {
        Guarded<uint16_t> level(input.level);
        form.run->subtract(level.Data(), input.coarse.data(), input.coarse.size());
        return level;
    });
}

void TestRangeAndCounts(const Input& input) {
    const size_t count = input.band.size();
    RequireEqualForms(BandVariants(), [&](const BandVariant& form) {
        const BandRange range = form.run->findRange(input.band.data(), count, input.start);
        return Guarded<int32_t>({range.min, range.max});
    });
    if (count == 0) return;
    const auto ends = std::minmax_element(input.band.begin(), input.band.end());
    const BandRange range = {*ends.first, *ends.second};
    RequireEqualForms(BandVariants(), [&](const BandVariant& form) {
        return Guarded<uint32_t>(form.run->countValues(input.band.data(), count, range));
    });
}

void TestRemap(const Input& input, int32_t factor) {
    constexpr int32_t kLowest = std::numeric_limits<int16_t>::min();
    std::vector<int16_t> responses;
    for (int32_t value = kLowest; value <= std::numeric_limits<int16_t>::max(); ++value)
        responses.push_back(static_cast<int16_t>(value * factor / 256));
    RequireEqualForms(BandVariants(), [&](const BandVariant& form) {
        Guarded<int16_t> band(input.band);
        form.run->remap(band.Data(), band.Size(), responses.data() - kLowest);
        return band;
    });
}

void TestAdd(const Input& input) {
    const size_t count = input.band.size();
    RequireEqualForms(BandVariants(), [&](const BandVariant& form) {
        Guarded<uint16_t> sums(count);
        form.run->add(input.coarse.data(), input.band.data(), count, input.maxValue, sums.Data());
        return sums;
    });
    RequireEqualForms(BandVariants(), [&](const BandVariant& form) {
        Guarded<uint16_t> place(input.level);
        const auto* band = reinterpret_cast<const int16_t*>(place.Data());
        form.run->add(input.coarse.data(), band, count, input.maxValue, place.Data());
        return place;
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr uint8_t kMostValues = 200;
    InputTail tail(data, size);
    const int32_t count = tail.Take<uint8_t>() % (kMostValues + 1);
    const int32_t start = tail.Take<uint16_t>();
    const int32_t maxValue = tail.Take<uint8_t>() % 4 == 0 ? tail.Take<int32_t>() : tail.Take<uint16_t>();
    const int32_t factor = tail.Take<int16_t>();
    const std::vector<uint16_t> values = tail.TakeFrame(count, 2);
    const auto middle = values.begin() + count;
    Input input = {{values.begin(), middle}, {middle, values.end()}, {}, {start, -start}, maxValue};
    for (const uint16_t value : input.level) input.band.push_back(static_cast<int16_t>(value));
    TestSubtract(input);
    TestRangeAndCounts(input);
    TestRemap(input, factor);
    TestAdd(input);
    return 0;
}
