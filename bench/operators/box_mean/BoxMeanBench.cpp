// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "operators/box_mean/BoxMean.h"

namespace vastrelline {
namespace {

void BenchBoxMean(benchmark::State& state, const BoxMeanVariant& variant, int32_t radius) {
    const BenchFrame frame = MakeNoiseFrame();
    std::vector<uint16_t> means(frame.pixels.size());
    for (auto _ : state) {
        variant.run({frame.pixels.data(), means.data(), frame.width, frame.height, radius});
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const int32_t radius : {1, 7, 100, 2000}) {
        for (const BoxMeanVariant& variant : BoxMeanVariants()) {
            const std::string name =
                std::string("BoxMean/") + variant.name + "/radius" + std::to_string(radius);
            benchmark::RegisterBenchmark(name.c_str(), BenchBoxMean, variant, radius)
                ->Unit(benchmark::kMillisecond);
        }
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
