// SPDX-License-Identifier: Apache-2.0

// The loops of sharpening and of preProcessing over three rows, with limits, tables and gains from anywhere:
// every form of each against the definition. The input's head are the pixels, its tail picks the rest, so
// that a change of that leaves the pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "stages/adaptive_unsharp/DetailLoops.h"
#include "stages/pre_processing/MidBandLoops.h"
#include "support/EqualForms.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

struct Rows {
    std::vector<uint16_t> above;
    std::vector<uint16_t> centre;
    std::vector<uint16_t> below;
};

// The loops without doubles.
void TestWholeDetail(const Rows& rows, int32_t maxValue) {
    const auto requireEqual = [&](auto loop) {
        RequireEqualForms(DetailVariants(), [&](const DetailVariant& form) {
            Guarded<uint16_t> pixels(rows.above);
            loop(*form.run, pixels.Data(), pixels.Size());
            return pixels;
        });
    };
    const uint16_t* centre = rows.centre.data();
    const uint16_t* below = rows.below.data();
    requireEqual([&](const DetailLoops& loops, uint16_t* detail, size_t count) {
        loops.scaleDetail(centre, below, count, detail);
    });
    requireEqual([&](const DetailLoops& loops, uint16_t* image, size_t count) {
        loops.addFinest(image, centre, below, count, maxValue);
    });
    requireEqual([&](const DetailLoops& loops, uint16_t* band, size_t count) {
        loops.takeMagnitude(band, centre, count);
    });
    if (rows.above.empty()) return;
    const auto [low, high] = std::minmax(rows.centre.front(), rows.below.front());
    requireEqual([&, low = low, high = high](const DetailLoops& loops, uint16_t* pixels, size_t count) {
        loops.clampToLevels(pixels, count, low, high);
    });
}

// The loops that look weights up. Those of the table are multiples of the ratio.
void TestTabledDetail(const Rows& rows, int32_t maxValue, double ratio, uint16_t base) {
    constexpr uint16_t kLevels = 300;
    std::vector<double> table(kLevels);
    for (size_t i = 0; i < table.size(); ++i) table[i] = (static_cast<double>(i) - 100.0) / 64.0 * ratio;
    std::vector<uint16_t> levels = rows.below;
    for (uint16_t& level : levels) level %= kLevels;
    const uint16_t* centre = rows.centre.data();
    RequireEqualForms(DetailVariants(), [&](const DetailVariant& form) {
        Guarded<uint16_t> pixels(levels);
        form.run->blendByEdges({pixels.Data(), rows.above.data(), centre, pixels.Size(), maxValue, table});
        return pixels;
    });
    const uint16_t* const maskOrNone[] = {nullptr, rows.below.data()};
    for (const uint16_t* mask : maskOrNone) {
        RequireEqualForms(DetailVariants(), [&](const DetailVariant& form) {
            Guarded<uint16_t> pixels(rows.above);
            form.run->addShaped({pixels.Data(), centre, levels.data(), mask, pixels.Size(), maxValue, table});
            return pixels;
        });
    }
    const WeightTable weights = {kLevels, base, table};
    std::vector<uint16_t> smooth = levels;
    for (uint16_t& level : smooth) level = static_cast<uint16_t>(level + base);
    for (const uint16_t* second : maskOrNone) {
        RequireEqualForms(DetailVariants(), [&](const DetailVariant& form) {
            Guarded<uint16_t> pixels(rows.above);
            form.run->addWeighted({pixels.Data(),
                                   smooth.data(),
                                   pixels.Size(),
                                   maxValue,
                                   {smooth.data(), ratio},
                                   {second, ratio},
                                   weights,
                                   weights});
            return pixels;
        });
    }
}

void TestMidBand(const Rows& rows, int32_t maxValue, double gain, uint16_t floor) {
    const auto requireEqual = [&](auto loop) {
        RequireEqualForms(MidBandVariants(), [&](const MidBandVariant& form) {
            Guarded<uint16_t> pixels(rows.above);
            loop(*form.run, pixels.Data(), pixels.Size());
            return pixels;
        });
    };
    const uint16_t* centre = rows.centre.data();
    const uint16_t* below = rows.below.data();
    requireEqual([&](const MidBandLoops& loops, uint16_t* detail, size_t count) {
        loops.subtract(centre, below, count, detail);
    });
    requireEqual([&](const MidBandLoops& loops, uint16_t* pixels, size_t count) {
        loops.boost(pixels, centre, count, maxValue, gain);
    });
    requireEqual([&](const MidBandLoops& loops, uint16_t* pixels, size_t count) {
        loops.addFine(pixels, centre, below, count, maxValue);
    });
    requireEqual([&](const MidBandLoops& loops, uint16_t* detail, size_t count) {
        loops.finish(centre, detail, count, maxValue, floor);
    });
    RequireEqualForms(MidBandVariants(), [&](const MidBandVariant& form) {
        const auto start = std::max<uint16_t>(floor, 1);
        return Guarded<uint16_t>({form.run->findFloor(centre, rows.centre.size(), start)});
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr uint8_t kLongestRow = 200;
    constexpr uint16_t kHighestBase = 65535 - 299;  // of a table of 300 levels
    InputTail tail(data, size);
    const int32_t count = tail.Take<uint8_t>() % (kLongestRow + 1);
    const int32_t maxValue = tail.Take<uint8_t>() % 4 == 0 ? tail.Take<int32_t>() : tail.Take<uint16_t>();
    const double ratio = tail.Take<uint8_t>() % 4 == 0 ? tail.Take<double>() : tail.Take<int16_t>() / 4096.0;
    const auto base = static_cast<uint16_t>(tail.Take<uint16_t>() % (kHighestBase + 1));
    const std::vector<uint16_t> pixels = tail.TakeFrame(count, 3);
    const auto row = [&](int32_t y) {
        const auto first = pixels.begin() + ptrdiff_t{y} * count;
        return std::vector<uint16_t>(first, first + count);
    };
    const Rows rows = {row(0), row(1), row(2)};
    TestWholeDetail(rows, maxValue);
    TestTabledDetail(rows, maxValue, ratio, base);
    TestMidBand(rows, maxValue, ratio, base);
    return 0;
}
