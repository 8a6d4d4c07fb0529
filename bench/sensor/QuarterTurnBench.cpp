// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "sensor/QuarterTurn.h"

namespace vastrelline {
namespace {

void BenchTranspose(benchmark::State& state, const TransposeVariant& variant) {
    const BenchFrame frame = MakeNoiseFrame();
    std::vector<uint16_t> result(frame.pixels.size());
    const auto width = static_cast<size_t>(frame.width);
    const auto height = static_cast<size_t>(frame.height);
    for (auto _ : state) {
        variant.run({frame.pixels.data(), frame.width, result.data(), frame.height, width, height});
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const TransposeVariant& variant : TransposeVariants()) {
        benchmark::RegisterBenchmark((std::string("Transpose/") + variant.name).c_str(), BenchTranspose,
                                     variant)
            ->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
