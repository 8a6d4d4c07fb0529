// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "platform/InstructionSet.h"

#if defined(__x86_64__)
#include <cpuid.h>
#endif

namespace vastrelline {

#if defined(__x86_64__)

// Which register states the operating system keeps for each thread, as bits.
inline uint32_t KeptRegisterStates() {
    uint32_t low = 0;
    uint32_t high = 0;
    __asm__ volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return low;
}

// The best set of the processor under this operating system, by the numbers of the processor's manual and not
// by the compiler's helpers that the library asks.
inline InstructionSet BestSetOfProcessor() {
    constexpr uint32_t kXsaveOn = 1U << 27U;                                     // leaf 1, ecx
    constexpr uint32_t kAvx = 1U << 28U;                                         // the same
    constexpr uint32_t kAvx2 = 1U << 5U;                                         // leaf 7, ebx
    constexpr uint32_t kAvx512 = 1U << 16U | 1U << 17U | 1U << 30U | 1U << 31U;  // F, DQ, BW, VL
    constexpr uint32_t kYmmState = 0x6;   // xmm and the upper halves of ymm
    constexpr uint32_t kZmmState = 0xE6;  // those, masks, and both parts of zmm
    uint32_t a = 0;
    uint32_t b = 0;
    uint32_t c = 0;
    uint32_t d = 0;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & kXsaveOn) == 0 || (c & kAvx) == 0)
        return InstructionSet::Baseline;
    const uint32_t kept = KeptRegisterStates();
    if (__get_cpuid_count(7, 0, &a, &b, &c, &d) == 0 || (b & kAvx2) == 0 || (kept & kYmmState) != kYmmState)
        return InstructionSet::Baseline;
    const bool hasAvx512 = (b & kAvx512) == kAvx512 && (kept & kZmmState) == kZmmState;
    return hasAvx512 ? InstructionSet::Avx512 : InstructionSet::Avx2;
}

#endif

// The best set that kernels of this build have forms for and this processor can run, worked out without the
// library.
inline InstructionSet ExpectedInstructionSet() {
#if defined(__x86_64__) && !defined(VASTRELLINE_SCALAR_ONLY)
    return BestSetOfProcessor();
#else
    return InstructionSet::Reference;
#endif
}

}  // namespace vastrelline
