#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "sensor/SpotCorrection.h"
#include "sensor/SpotPower.h"

namespace vastrelline {
namespace {

constexpr int32_t kMaskSize = 15;  // as the exports ask for

void BenchApplySpotCorrection(benchmark::State& state) {
    const BenchFrame original = MakeNoiseFrame();
    BenchFrame frame = original;
    for (auto _ : state) {
        state.PauseTiming();
        frame.pixels = original.pixels;
        state.ResumeTiming();
        ApplySpotCorrection(frame.pixels.data(), kMaskSize, frame.width, frame.height, 1.5F);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchApplySpotCorrection)->Name("SpotCorrection/whole")->Unit(benchmark::kMillisecond);

void BenchSquareBoxMean(benchmark::State& state) {
    const BenchFrame frame = MakeNoiseFrame();
    std::vector<uint16_t> means(frame.pixels.size());
    for (auto _ : state) {
        SquareBoxMean(means.data(), frame.pixels.data(), kMaskSize, frame.width, frame.height);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}
BENCHMARK(BenchSquareBoxMean)->Name("SpotCorrection/SquareBoxMean")->Unit(benchmark::kMillisecond);

// Of the whole the powers alone, each pixel with an exponent of its own.
void BenchSpotPower(benchmark::State& state, const SpotPowerVariant& variant) {
    const BenchFrame original = MakeNoiseFrame();
    const std::vector<uint16_t> means(original.pixels.rbegin(), original.pixels.rend());
    std::vector<float> exponents;
    for (int32_t mean = 0; mean <= kBenchMaxValue; ++mean)
        exponents.push_back(std::pow(1.5F, 1 - 2 * static_cast<float>(mean) / kBenchMaxValue));
    const SpotPowerTables tables = MakeSpotPowerTables(kBenchMaxValue, exponents);
    BenchFrame frame = original;
    for (auto _ : state) {
        state.PauseTiming();
        frame.pixels = original.pixels;
        state.ResumeTiming();
        variant.run({frame.pixels.data(), means.data(), means.size()}, tables);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const SpotPowerVariant& variant : SpotPowerVariants()) {
        benchmark::RegisterBenchmark((std::string("SpotPower/") + variant.name).c_str(), BenchSpotPower,
                                     variant)
            ->Unit(benchmark::kMillisecond);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
