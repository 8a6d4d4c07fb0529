// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "BenchFrames.h"
#include "sensor/SaturationCap.h"

namespace vastrelline {
namespace {

// With pixels to cap every time: the brightest unsaturated one is white again before each call.
void BenchSaturationCap(benchmark::State& state, const SaturationCapVariant& variant) {
    BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state) {
        frame.pixels.back() = kBenchMaxValue;
        variant.run(frame.pixels.data(), frame.pixels.size(), kBenchMaxValue);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const SaturationCapVariant& variant : SaturationCapVariants()) {
        benchmark::RegisterBenchmark((std::string("SaturationCap/") + variant.name).c_str(),
                                     BenchSaturationCap, variant)
            ->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
