// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <string>

#include "BenchFrames.h"
#include "operators/histogram/PixelRange.h"

namespace vastrelline {
namespace {

void BenchPixelRange(benchmark::State& state, const PixelRangeVariant& variant) {
    const BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state) benchmark::DoNotOptimize(variant.run(frame.pixels.data(), frame.pixels.size()));
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const PixelRangeVariant& variant : PixelRangeVariants()) {
        benchmark::RegisterBenchmark((std::string("PixelRange/") + variant.name).c_str(), BenchPixelRange,
                                     variant)
            ->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
