// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "stages/pre_processing/MidBandLoops.h"

namespace vastrelline {
namespace {

// loop   runs over the pixels that it is given and may change, beside a softer frame
template <typename Loop>
void BenchLoop(benchmark::State& state, const Loop& loop) {
    const BenchFrame frame = MakeNoiseFrame();
    const std::vector<uint16_t> soft = MakeSoftFrame().pixels;
    std::vector<uint16_t> work(frame.pixels);
    for (auto _ : state) {
        // What a run leaves is no noise. The copy takes a tenth of a millisecond.
        std::copy(frame.pixels.begin(), frame.pixels.end(), work.begin());
        loop(work.data(), soft.data(), work.size());
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

void BenchFloor(benchmark::State& state, const MidBandVariant& variant) {
    BenchLoop(state, [&](uint16_t* pixels, const uint16_t* /*soft*/, size_t count) {
        benchmark::DoNotOptimize(variant.run->findFloor(pixels, count, kBenchMaxValue));
    });
}

void BenchSubtract(benchmark::State& state, const MidBandVariant& variant) {
    std::vector<uint16_t> detail(MakeNoiseFrame().pixels.size());
    BenchLoop(state, [&](uint16_t* pixels, const uint16_t* soft, size_t count) {
        variant.run->subtract(pixels, soft, count, detail.data());
    });
}

void BenchBoost(benchmark::State& state, const MidBandVariant& variant) {
    BenchLoop(state, [&](uint16_t* pixels, const uint16_t* soft, size_t count) {
        variant.run->boost(pixels, soft, count, kBenchMaxValue, 2.5);
    });
}

void BenchFine(benchmark::State& state, const MidBandVariant& variant) {
    const std::vector<uint16_t> boosted = MakeNoiseFrame().pixels;
    BenchLoop(state, [&](uint16_t* pixels, const uint16_t* soft, size_t count) {
        variant.run->addFine(pixels, soft, boosted.data(), count, kBenchMaxValue);
    });
}

void BenchFinish(benchmark::State& state, const MidBandVariant& variant) {
    BenchLoop(state, [&](uint16_t* detail, const uint16_t* soft, size_t count) {
        variant.run->finish(soft, detail, count, kBenchMaxValue, 100);
    });
}

const bool kRegistered = [] {
    for (const MidBandVariant& variant : MidBandVariants()) {
        const auto add = [&](const char* loop, auto bench) {
            const std::string name = std::string("MidBandLoops/") + loop + '/' + variant.name;
            benchmark::RegisterBenchmark(name.c_str(), bench, variant)->Unit(benchmark::kMillisecond);
        };
        add("FindFloor", BenchFloor);
        add("Subtract", BenchSubtract);
        add("Boost", BenchBoost);
        add("AddFine", BenchFine);
        add("Finish", BenchFinish);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
