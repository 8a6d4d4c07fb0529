// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "stages/pyramid/BandKernels.h"

namespace vastrelline {
namespace {

BenchFrame MakeBand() {
    BenchFrame band = MakeSoftFrame();
    for (uint16_t& value : band.pixels) value = static_cast<uint16_t>(value % 256 - 128);
    return band;
}

void BenchFindRange(benchmark::State& state, const BandKernels& kernels) {
    const BenchFrame frame = MakeBand();
    const auto* band = reinterpret_cast<const int16_t*>(frame.pixels.data());
    for (auto _ : state)
        benchmark::DoNotOptimize(kernels.findRange(band, frame.pixels.size(), {4095, -4095}));
    ReportPixels(state, frame);
}

void BenchCountValues(benchmark::State& state, const BandKernels& kernels) {
    const BenchFrame frame = MakeBand();
    const auto* band = reinterpret_cast<const int16_t*>(frame.pixels.data());
    for (auto _ : state)
        benchmark::DoNotOptimize(kernels.countValues(band, frame.pixels.size(), {-128, 127}));
    ReportPixels(state, frame);
}

void BenchRemap(benchmark::State& state, const BandKernels& kernels) {
    BenchFrame frame = MakeBand();
    auto* band = reinterpret_cast<int16_t*>(frame.pixels.data());
    std::vector<int16_t> responses;
    for (int16_t value = 127; value >= -128; --value) responses.push_back(value);
    for (auto _ : state) {
        kernels.remap(band, frame.pixels.size(), responses.data() + 128);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

void BenchSubtractAndAdd(benchmark::State& state, const BandKernels& kernels) {
    BenchFrame frame = MakeSoftFrame();
    const BenchFrame coarse = MakeSoftFrame();
    for (auto _ : state) {
        kernels.subtract(frame.pixels.data(), coarse.pixels.data(), frame.pixels.size());
        kernels.add(coarse.pixels.data(), reinterpret_cast<const int16_t*>(frame.pixels.data()),
                    frame.pixels.size(), kBenchMaxValue, frame.pixels.data());
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const BandVariant& variant : BandVariants()) {
        const std::string name = std::string("BandKernels/") + variant.name;
        const auto add = [&](const char* what, void (*bench)(benchmark::State&, const BandKernels&)) {
            benchmark::RegisterBenchmark((name + what).c_str(), bench, *variant.run)
                ->Unit(benchmark::kMillisecond);
        };
        add("/FindRange", BenchFindRange);
        add("/CountValues", BenchCountValues);
        add("/Remap", BenchRemap);
        add("/SubtractAndAdd", BenchSubtractAndAdd);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
