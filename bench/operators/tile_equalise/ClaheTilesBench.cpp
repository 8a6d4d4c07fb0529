// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "BenchFrames.h"
#include "operators/tile_equalise/ClaheFrame.h"
#include "operators/tile_equalise/ClaheTiles.h"
#include "platform/InstructionSet.h"

namespace vastrelline {
namespace {

struct ClaheSizes {
    int32_t blockSize;
    int32_t bins;
};

// The whole of ClaheFrame, the search for the range included.
void BenchClahe(benchmark::State& state, InstructionSet set, ClaheSizes sizes) {
    const ScopedInstructionSet limit(set);
    BenchFrame frame = MakeNoiseFrame();
    for (auto _ : state) {
        ClaheFrame(frame.pixels.data(), frame.width, frame.height, kBenchMaxValue, sizes.blockSize,
                   sizes.bins, 1.5);
        benchmark::ClobberMemory();
    }
    ReportPixels(state, frame);
}

const bool kRegistered = [] {
    // An even tile edge, one that is no power of two, an odd one, bins beyond 8 bits, and tiles with so many
    // pixels that weights do not fit 16 bits.
    for (const ClaheSizes sizes :
         {ClaheSizes{64, 256}, ClaheSizes{50, 256}, ClaheSizes{75, 256}, ClaheSizes{64, 1024},
          ClaheSizes{128, 256}, ClaheSizes{256, 256}, ClaheSizes{300, 256}}) {
        for (const ClaheVariant& variant : ClaheVariants()) {
            const std::string name = std::string("Clahe/") + variant.name + "/tile" +
                                     std::to_string(sizes.blockSize) + "/bins" + std::to_string(sizes.bins);
            benchmark::RegisterBenchmark(name.c_str(), BenchClahe, variant.needs, sizes)
                ->Unit(benchmark::kMillisecond);
        }
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
