// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "sensor/SpotPower.h"

namespace vastrelline {
namespace {

// The powers of the spot correction alone, each pixel with an exponent of its own.
void BenchSpotPower(benchmark::State& state, const SpotPowerVariant& variant) {
    const BenchFrame original = MakeNoiseFrame();
    const std::vector<uint16_t> means(original.pixels.rbegin(), original.pixels.rend());
    std::vector<float> exponents;
    for (int32_t mean = 0; mean <= kBenchMaxValue; ++mean)
        exponents.push_back(std::pow(1.5F, 1 - 2 * static_cast<float>(mean) / kBenchMaxValue));
    const SpotPowerTables tables = MakeSpotPowerTables(kBenchMaxValue, exponents);
    BenchFrame frame = original;
    for (auto _ : state) {
        state.PauseTiming();
        frame.pixels = original.pixels;
        state.ResumeTiming();
        variant.run({frame.pixels.data(), means.data(), means.size()}, tables);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const SpotPowerVariant& variant : SpotPowerVariants()) {
        benchmark::RegisterBenchmark((std::string("SpotPower/") + variant.name).c_str(), BenchSpotPower,
                                     variant)
            ->Unit(benchmark::kMillisecond);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
