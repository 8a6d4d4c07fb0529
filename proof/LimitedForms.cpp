// SPDX-License-Identifier: Apache-2.0

// What the library with this file inside has beside its eight functions: it can be told to use no more than a set
// of instructions, so that a machine proves every form of the kernels that it can run.
#include <cstdint>
#include <cstring>
#include <optional>

#include "platform/InstructionSet.h"

// 0: done, 1: this machine or this build has no such forms, or there is no such set.
extern "C" __attribute__((visibility("default"))) int32_t LimitVastrellineForms(const char* set) {
    using vastrelline::InstructionSet;
    struct NamedSet {
        const char* name;
        InstructionSet set;
    };
    constexpr NamedSet kSets[] = {{"reference", InstructionSet::Reference},
                                  {"baseline", InstructionSet::Baseline},
                                  {"avx2", InstructionSet::Avx2},
                                  {"avx512", InstructionSet::Avx512}};
    // For the life of the process: whoever asks for this runs one call in it.
    static std::optional<vastrelline::ScopedInstructionSet> limit;
    for (const NamedSet& each : kSets) {
        if (std::strcmp(each.name, set) != 0) continue;
        if (vastrelline::DetectInstructionSet() < each.set) return 1;
        limit.emplace(each.set);
        return vastrelline::AllowedInstructionSet() == each.set ? 0 : 1;
    }
    return 1;
}
