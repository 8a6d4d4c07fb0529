// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "operators/separable/GaussKernel.h"
#include "operators/separable/RowFilter.h"

namespace vastrelline {
namespace {

void BenchRowFilter(benchmark::State& state, const RowFilterVariant& variant, double sigma) {
    int32_t size = 0;
    const std::vector<double> kernel = MakeGaussKernel(size, sigma);
    const BenchFrame frame = MakeNoiseFrame();
    std::vector<uint16_t> taken(static_cast<size_t>(frame.width));
    const auto sourceRow = [&](int32_t y) {
        return frame.pixels.data() + static_cast<size_t>(y) * static_cast<size_t>(frame.width);
    };
    const auto takeRow = [&](int32_t /*y*/, const uint16_t* row) {
        std::copy_n(row, taken.size(), taken.data());
        benchmark::ClobberMemory();
    };
    for (auto _ : state) {
        variant.run(
            {frame.width, frame.height, kBenchMaxValue, kernel, EdgeRule::Replicate, sourceRow, takeRow});
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const char* sigma : {"1", "3"}) {
        for (const RowFilterVariant& variant : RowFilterVariants()) {
            const std::string name = std::string("RowFilter/") + variant.name + "/sigma" + sigma;
            benchmark::RegisterBenchmark(name.c_str(), BenchRowFilter, variant, std::stod(sigma))
                ->Unit(benchmark::kMillisecond);
        }
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
