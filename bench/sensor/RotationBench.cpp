// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>

#include "BenchFrames.h"
#include "sensor/Rotation.h"

namespace vastrelline {
namespace {

void BenchRotateBuffer(benchmark::State& state) {
    BenchFrame frame = MakeNoiseFrame();
    const auto angle = static_cast<int32_t>(state.range(0));
    for (auto _ : state) {
        RotateBuffer(frame.pixels.data(), frame.width, frame.height, angle);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchRotateBuffer)
    ->Name("Rotation/RotateBuffer")
    ->Arg(90)
    ->Arg(-90)
    ->Arg(180)
    ->Unit(benchmark::kMicrosecond);

void BenchFlipBuffer(benchmark::State& state) {
    BenchFrame frame = MakeNoiseFrame();
    const auto mode = static_cast<int32_t>(state.range(0));
    for (auto _ : state) {
        FlipBuffer(frame.pixels.data(), frame.width, frame.height, mode);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchFlipBuffer)->Name("Rotation/FlipBuffer")->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
