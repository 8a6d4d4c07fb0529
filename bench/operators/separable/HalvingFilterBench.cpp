// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "operators/separable/GaussKernel.h"
#include "operators/separable/HalvingFilter.h"

namespace vastrelline {
namespace {

void BenchHalvingFilter(benchmark::State& state, const HalvingVariant& variant, double sigma) {
    int32_t size = 0;
    const std::vector<double> kernel = MakeGaussKernel(size, sigma);
    const BenchFrame frame = MakeNoiseFrame();
    std::vector<uint16_t> result(static_cast<size_t>(frame.width / 2) *
                                 static_cast<size_t>(frame.height / 2));
    for (auto _ : state) {
        variant.run({frame.pixels.data(), frame.width, frame.height, kBenchMaxValue, kernel,
                     EdgeRule::Replicate, result.data()});
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const char* sigma : {"1", "3"}) {
        for (const HalvingVariant& variant : HalvingVariants()) {
            const std::string name = std::string("HalvingFilter/") + variant.name + "/sigma" + sigma;
            benchmark::RegisterBenchmark(name.c_str(), BenchHalvingFilter, variant, std::stod(sigma))
                ->Unit(benchmark::kMillisecond);
        }
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
