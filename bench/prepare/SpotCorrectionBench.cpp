#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "BenchFrames.h"
#include "prepare/SpotCorrection.h"

namespace vastrelline {
namespace {

constexpr int32_t kWindow = 15;  // as the exports have it

// On noise the means hardly differ, on a slope they do, and with them the exponents.
void BenchApplySpotCorrection(benchmark::State& state, BenchFrame (*makeFrame)()) {
    const BenchFrame source = makeFrame();
    BenchFrame frame = source;
    for (auto _ : state) {
        frame.pixels = source.pixels;
        ApplySpotCorrection(frame.pixels.data(), kWindow, frame.width, frame.height, 1.5F);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK_CAPTURE(BenchApplySpotCorrection, noise, MakeNoiseFrame)
    ->Name("SpotCorrection/Apply/noise")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BenchApplySpotCorrection, soft, MakeSoftFrame)
    ->Name("SpotCorrection/Apply/soft")
    ->Unit(benchmark::kMillisecond);

void BenchSquareBoxMean(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    std::vector<uint16_t> mean(frame.pixels.size());
    for (auto _ : state) {
        SquareBoxMean(mean.data(), frame.pixels.data(), kWindow, frame.width, frame.height);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchSquareBoxMean)->Name("SpotCorrection/SquareBoxMean")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vastrelline
