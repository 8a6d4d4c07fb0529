// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "operators/resample/Resize.h"

namespace vastrelline {
namespace {

void BenchResize(benchmark::State& state, const ResizeVariant& variant, double scale) {
    const BenchFrame frame = MakeNoiseFrame();
    const auto width = static_cast<int32_t>(frame.width * scale);
    const auto height = static_cast<int32_t>(frame.height * scale);
    std::vector<uint16_t> result(static_cast<size_t>(width) * static_cast<size_t>(height));
    for (auto _ : state) {
        variant.run({frame.pixels.data(), frame.width, frame.height, scale, result.data(), width, height});
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

// The whole way down, through the Gaussian, and up again. A factor of 1 is the Gaussian alone.
void BenchReducedScaleGaussian(benchmark::State& state) {
    BenchFrame frame = MakeNoiseFrame();
    const auto factor = static_cast<int32_t>(state.range(0));
    constexpr double kSigma = 3;
    for (auto _ : state) {
        ReducedScaleGaussian(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue, kSigma, factor);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchReducedScaleGaussian)
    ->Name("ReducedScaleGaussian/factor")
    ->Arg(1)
    ->Arg(2)
    ->Arg(3)
    ->Arg(4)
    ->Arg(8)
    ->Unit(benchmark::kMillisecond);

const bool kRegistered = [] {
    for (const char* scale : {"0.5", "2", "0.25", "3", "0.7", "8"}) {
        for (const ResizeVariant& variant : ResizeVariants()) {
            const std::string name = std::string("Resize/") + variant.name + "/scale" + scale;
            benchmark::RegisterBenchmark(name.c_str(), BenchResize, variant, std::stod(scale))
                ->Unit(benchmark::kMillisecond);
        }
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
