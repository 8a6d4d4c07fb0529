// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "stages/pre_contrast/PreContrast.h"

namespace vastrelline {
namespace {

void BenchAmplify(benchmark::State& state, const AmplifyVariant& variant) {
    BenchFrame frame = MakeNoiseFrame();
    const std::vector<uint16_t> smoothed(frame.pixels.rbegin(), frame.pixels.rend());
    for (auto _ : state) {
        variant.run({frame.pixels.data(), smoothed.data(), smoothed.size(), kBenchMaxValue, 1.25});
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

// The whole stage without its keys, dumps and log.
void BenchApplyPreContrast(benchmark::State& state, double rescale) {
    BenchFrame frame = MakeNoiseFrame();
    PreContrastParams params;
    params.PRECONTRAST_RESCALE = rescale;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            ApplyPreContrast(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue, params));
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const AmplifyVariant& variant : AmplifyVariants()) {
        const std::string name = std::string("PreContrast/Amplify/") + variant.name;
        benchmark::RegisterBenchmark(name.c_str(), BenchAmplify, variant)->Unit(benchmark::kMillisecond);
    }
    for (const char* rescale : {"1", "2"}) {
        const std::string name = std::string("PreContrast/Apply/rescale") + rescale;
        benchmark::RegisterBenchmark(name.c_str(), BenchApplyPreContrast, std::stod(rescale))
            ->Unit(benchmark::kMillisecond);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
