// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>

#include "BenchFrames.h"
#include "sensor/CropBuffer.h"

namespace vastrelline {
namespace {

// A frame cut by a few pixels on each side.
void BenchCropBuffer(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    constexpr int32_t kCut = 8;
    for (auto _ : state)
        benchmark::DoNotOptimize(CropBuffer(frame.pixels.data(), frame.width, frame.height, kCut, kCut,
                                            frame.width - 2 * kCut, frame.height - 2 * kCut,
                                            ElementType::Unsigned16));
    ReportPixels(state, frame);
}
BENCHMARK(BenchCropBuffer)->Name("CropBuffer/CropBuffer")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
