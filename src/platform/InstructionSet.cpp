// SPDX-License-Identifier: Apache-2.0
#include "platform/InstructionSet.h"

#include <algorithm>
#include <atomic>

namespace vastrelline {

namespace {

std::atomic<InstructionSet>& Limit() {
    static std::atomic<InstructionSet> limit{InstructionSet::Avx512};
    return limit;
}

}  // namespace

InstructionSet DetectInstructionSet() {
#if VASTRELLINE_VECTOR_FORMS
    static const InstructionSet detected = [] {
        __builtin_cpu_init();
        if (__builtin_cpu_supports("avx2") == 0) return InstructionSet::Baseline;
        const bool hasAvx512 =
            __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512dq") != 0 &&
            __builtin_cpu_supports("avx512bw") != 0 && __builtin_cpu_supports("avx512vl") != 0;
        return hasAvx512 ? InstructionSet::Avx512 : InstructionSet::Avx2;
    }();
    return detected;
#else
    return InstructionSet::Reference;
#endif
}

InstructionSet AllowedInstructionSet() { return std::min(Limit().load(), DetectInstructionSet()); }

ScopedInstructionSet::ScopedInstructionSet(InstructionSet limit) : before_(Limit().load()) {
    Limit() = std::min(limit, before_);
}

ScopedInstructionSet::~ScopedInstructionSet() { Limit() = before_; }

}  // namespace vastrelline
