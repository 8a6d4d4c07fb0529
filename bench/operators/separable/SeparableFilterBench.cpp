// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "operators/separable/GaussKernel.h"
#include "operators/separable/SeparableFilter.h"

namespace vastrelline {
namespace {

void BenchFilter(benchmark::State& state, const FilterVariant& variant, double sigma) {
    int32_t size = 0;
    const std::vector<double> kernel = MakeGaussKernel(size, sigma);
    BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state) {
        variant.run(
            {frame.pixels.data(), frame.width, frame.height, kBenchMaxValue, kernel, EdgeRule::Replicate});
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const char* sigma : {"0.5", "1", "3", "6", "15"}) {
        for (const FilterVariant& variant : FilterVariants()) {
            const std::string name = std::string("SeparableFilter/") + variant.name + "/sigma" + sigma;
            benchmark::RegisterBenchmark(name.c_str(), BenchFilter, variant, std::stod(sigma))
                ->Unit(benchmark::kMillisecond);
        }
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
