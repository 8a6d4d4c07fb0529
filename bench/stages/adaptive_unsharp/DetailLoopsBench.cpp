// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "stages/adaptive_unsharp/DetailLoops.h"

namespace vastrelline {
namespace {

// The frame, a softer one of neighbouring levels, and what the loops read of tables: half of the weights are
// above 0.
struct DetailInput {
    BenchFrame frame = MakeNoiseFrame();
    std::vector<uint16_t> smooth = MakeSoftFrame().pixels;
    std::vector<double> table = MakeTable();
    WeightTable weights{static_cast<int32_t>(table.size()), 0, table};

    static std::vector<double> MakeTable() {
        std::vector<double> values(size_t{kBenchMaxValue} + 1);
        for (size_t i = 0; i < values.size(); ++i) values[i] = 1.0 - static_cast<double>(i) / 2048.0;
        return values;
    }
};

// loop   runs over the pixels that it is given and may change
template <typename Loop>
void BenchLoop(benchmark::State& state, const DetailInput& input, const Loop& loop) {
    std::vector<uint16_t> work(input.frame.pixels);
    for (auto _ : state) {
        // What a run leaves is no index of a table. The copy takes a tenth of a millisecond.
        std::copy(input.frame.pixels.begin(), input.frame.pixels.end(), work.begin());
        loop(work.data(), work.size());
        benchmark::ClobberMemory();
    }
    ReportPixels(state, input.frame);
}

void BenchBlend(benchmark::State& state, const DetailVariant& variant) {
    const DetailInput input;
    BenchLoop(state, input, [&](uint16_t* pixels, size_t count) {
        variant.run->blendByEdges(
            {pixels, input.frame.pixels.data(), input.smooth.data(), count, kBenchMaxValue, input.table});
    });
}

void BenchScale(benchmark::State& state, const DetailVariant& variant) {
    const DetailInput input;
    BenchLoop(state, input, [&](uint16_t* detail, size_t count) {
        variant.run->scaleDetail(input.frame.pixels.data(), input.smooth.data(), count, detail);
    });
}

void BenchShaped(benchmark::State& state, const DetailVariant& variant, bool isMasked) {
    const DetailInput input;
    std::vector<uint16_t> mask(input.smooth);
    for (uint16_t& pixel : mask) pixel %= 256;
    BenchLoop(state, input, [&](uint16_t* pixels, size_t count) {
        variant.run->addShaped({pixels, input.smooth.data(), input.frame.pixels.data(),
                                isMasked ? mask.data() : nullptr, count, kBenchMaxValue, input.table});
    });
}

void BenchFinest(benchmark::State& state, const DetailVariant& variant) {
    const DetailInput input;
    BenchLoop(state, input, [&](uint16_t* image, size_t count) {
        variant.run->addFinest(image, input.smooth.data(), input.frame.pixels.data(), count, kBenchMaxValue);
    });
}

void BenchMagnitude(benchmark::State& state, const DetailVariant& variant) {
    const DetailInput input;
    BenchLoop(state, input, [&](uint16_t* band, size_t count) {
        variant.run->takeMagnitude(band, input.smooth.data(), count);
    });
}

void BenchLevels(benchmark::State& state, const DetailVariant& variant) {
    const DetailInput input;
    BenchLoop(state, input,
              [&](uint16_t* pixels, size_t count) { variant.run->clampToLevels(pixels, count, 100, 3000); });
}

void BenchWeighted(benchmark::State& state, const DetailVariant& variant, bool hasSecond) {
    const DetailInput input;
    const uint16_t* second = hasSecond ? input.frame.pixels.data() : nullptr;
    BenchLoop(state, input, [&](uint16_t* pixels, size_t count) {
        variant.run->addWeighted({pixels,
                                  input.frame.pixels.data(),
                                  count,
                                  kBenchMaxValue,
                                  {input.smooth.data(), 2.0},
                                  {second, 1.0},
                                  input.weights,
                                  input.weights});
    });
}

const bool kRegistered = [] {
    for (const DetailVariant& variant : DetailVariants()) {
        const auto add = [&](const char* loop, auto bench, auto... arguments) {
            const std::string name = std::string("UnsharpLoops/") + loop + '/' + variant.name;
            benchmark::RegisterBenchmark(name.c_str(), bench, variant, arguments...)
                ->Unit(benchmark::kMillisecond);
        };
        add("BlendByEdges", BenchBlend);
        add("ScaleDetail", BenchScale);
        add("AddShaped", BenchShaped, false);
        add("AddShapedByMask", BenchShaped, true);
        add("AddFinest", BenchFinest);
        add("TakeMagnitude", BenchMagnitude);
        add("ClampToLevels", BenchLevels);
        add("AddWeighted", BenchWeighted, false);
        add("AddWeightedTwice", BenchWeighted, true);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
