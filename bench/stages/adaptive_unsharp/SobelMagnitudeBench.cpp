// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "BenchFrames.h"
#include "stages/adaptive_unsharp/SobelMagnitude.h"

namespace vastrelline {
namespace {

// With `shift` the pixels take other ranges: 2 gives 14 bits, which 16-bit lanes hold, 4 gives 16.
void BenchSobel(benchmark::State& state, const SobelRowVariant& variant, int32_t shift) {
    BenchFrame frame = MakeNoiseFrame();
    for (uint16_t& pixel : frame.pixels) pixel = static_cast<uint16_t>(pixel << shift);
    std::vector<uint16_t> work(frame.pixels);
    for (auto _ : state) {
        // A frame of magnitudes of magnitudes would fade to 0. The copy takes as long as a third of the work.
        state.PauseTiming();
        std::copy(frame.pixels.begin(), frame.pixels.end(), work.begin());
        state.ResumeTiming();
        SobelMagnitudeWith(variant, work.data(), frame.width, frame.height);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    for (const int32_t shift : {0, 4}) {
        for (const SobelRowVariant& variant : SobelRowVariants()) {
            const std::string name =
                std::string("SobelMagnitude/") + variant.name + "/bits" + std::to_string(12 + shift);
            benchmark::RegisterBenchmark(name.c_str(), BenchSobel, variant, shift)
                ->Unit(benchmark::kMillisecond);
        }
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
