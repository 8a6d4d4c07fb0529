// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// What a kernel's variants are built for, each a superset of the ones before it.
enum class InstructionSet : int32_t {
    Reference,  // the plain scalar form, which defines the result
    Baseline,   // every x86-64
    Avx2,
    Avx512,  // F, DQ, BW and VL
};

// The best set that this processor and operating system can run; Reference in a build without vector forms,
// as on other architectures.
InstructionSet DetectInstructionSet();

// The best set that kernels may use: what was detected, unless a scope asks for less.
InstructionSet AllowedInstructionSet();

// Limits the kernels of all threads to a set as long as it lives, for tests, fuzz targets and benchmarks;
// then the limit from before holds again. It takes away only: a set beyond what was detected or that of a
// scope around it acts as theirs. Scopes lie one within the other, as they do on a stack.
class ScopedInstructionSet {
public:
    explicit ScopedInstructionSet(InstructionSet limit);
    ~ScopedInstructionSet();
    ScopedInstructionSet(const ScopedInstructionSet&) = delete;
    ScopedInstructionSet& operator=(const ScopedInstructionSet&) = delete;

private:
    InstructionSet before_;
};

}  // namespace vastrelline

// Whether kernels have forms beside the plain ones. All that is built with the library sees the same answer,
// tests included: VASTRELLINE_SCALAR_ONLY goes to everybody who links it.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(VASTRELLINE_SCALAR_ONLY)
#define VASTRELLINE_VECTOR_FORMS 1
#else
#define VASTRELLINE_VECTOR_FORMS 0
#endif

// Marks one function for an instruction set. Without fused multiply-add: a fused one rounds once in place of
// twice and changes results.
#if VASTRELLINE_VECTOR_FORMS
#define TARGET_BASELINE
#define TARGET_AVX2 __attribute__((target("avx2,no-fma")))
#if defined(__clang__)
// To Clang the foundation of AVX-512 holds FMA, so that without the one it drops the other. It need not be
// forbidden: with -ffp-contract=off it never fuses what stands apart.
#define TARGET_AVX512 __attribute__((target("avx512f,avx512dq,avx512bw,avx512vl")))
#else
#define TARGET_AVX512 __attribute__((target("avx512f,avx512dq,avx512bw,avx512vl,no-fma")))
#endif
#endif
