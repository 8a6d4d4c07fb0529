#include <benchmark/benchmark.h>

#include "BenchFrames.h"
#include "image/PixelRange.h"

namespace vastrelline {
namespace {

void BenchMaxPixel(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state) benchmark::DoNotOptimize(MaxPixel(frame.pixels.data(), frame.width, frame.height));
    ReportPixels(state, frame);
}
BENCHMARK(BenchMaxPixel)->Name("PixelRange/MaxPixel")->Unit(benchmark::kMicrosecond);

void BenchMinPixel(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state) benchmark::DoNotOptimize(MinPixel(frame.pixels.data(), frame.width, frame.height));
    ReportPixels(state, frame);
}
BENCHMARK(BenchMinPixel)->Name("PixelRange/MinPixel")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
