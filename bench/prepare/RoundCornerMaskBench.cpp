#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "BenchFrames.h"
#include "prepare/RoundCornerMask.h"

namespace vastrelline {
namespace {

// The full sensor frame, turned by each of the codes.
void BenchBuildRoundCornerMask(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    const auto code = static_cast<int32_t>(state.range(0));
    const int32_t cutOff = std::min(159, std::min(frame.width, frame.height) / 2);
    const bool isTurned = code == kTurnedClockwise || code == kTurnedCounterclockwise;
    const int32_t width = isTurned ? frame.height : frame.width;
    const int32_t height = isTurned ? frame.width : frame.height;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            BuildRoundCornerMask(frame.width, frame.height, cutOff, cutOff, code, 0, 0, width, height));
    ReportPixels(state, frame);
}
BENCHMARK(BenchBuildRoundCornerMask)
    ->Name("RoundCornerMask/BuildRoundCornerMask")
    ->DenseRange(kAsBuilt, kTurnedCounterclockwise)
    ->Unit(benchmark::kMicrosecond);

// The work does not grow with the frame, so this one tells its time only.
void BenchMarkCornerTriangles(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    std::vector<uint16_t> mask(frame.pixels.size());
    for (auto _ : state) {
        MarkCornerTriangles(frame.pixels.data(), mask.data(), frame.width, frame.height);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BenchMarkCornerTriangles)
    ->Name("RoundCornerMask/MarkCornerTriangles")
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vastrelline
