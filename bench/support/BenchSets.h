// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "platform/InstructionSet.h"

namespace vastrelline {

struct BenchSet {
    const char* name;
    InstructionSet set;
};

// The instruction sets that this build and machine can run, the reference first.
inline std::vector<BenchSet> BenchSets() {
    std::vector<BenchSet> sets;
    for (const BenchSet& set :
         {BenchSet{"scalar", InstructionSet::Reference}, BenchSet{"baseline", InstructionSet::Baseline},
          BenchSet{"avx2", InstructionSet::Avx2}, BenchSet{"avx512", InstructionSet::Avx512}}) {
        if (set.set <= AllowedInstructionSet()) sets.push_back(set);
    }
    return sets;
}

// Registers `name`/<set>/`form` for each of these sets: a benchmark of something that picks its kernels
// itself.
template <typename Bench, typename... Arguments>
void RegisterForAllSets(const std::string& name, const std::string& form, Bench bench,
                        Arguments... arguments) {
    for (const BenchSet& set : BenchSets()) {
        const auto run = [set, bench, arguments...](benchmark::State& state) {
            const ScopedInstructionSet limit(set.set);
            bench(state, arguments...);
        };
        benchmark::RegisterBenchmark((name + "/" + set.name + "/" + form).c_str(), run)
            ->Unit(benchmark::kMillisecond);
    }
}

}  // namespace vastrelline
