// SPDX-License-Identifier: Apache-2.0
#include "platform/FloatingPointScope.h"

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif

namespace vastrelline {

namespace {

#if defined(__x86_64__) || defined(__i386__)

// The register that holds how to compute holds the flags, too.
constexpr uint64_t kPlain = 0x1F80;

uint64_t ReadControl() { return _mm_getcsr(); }
void WriteControl(uint64_t control) { _mm_setcsr(static_cast<uint32_t>(control)); }
uint64_t ReadFlags() { return 0; }
void WriteFlags(uint64_t /*flags*/) {}

#elif defined(__aarch64__)

constexpr uint64_t kPlain = 0;

uint64_t ReadControl() {
    uint64_t control = 0;
    __asm__ volatile("mrs %0, fpcr" : "=r"(control));
    return control;
}
void WriteControl(uint64_t control) { __asm__ volatile("msr fpcr, %0" : : "r"(control)); }
uint64_t ReadFlags() {
    uint64_t flags = 0;
    __asm__ volatile("mrs %0, fpsr" : "=r"(flags));
    return flags;
}
void WriteFlags(uint64_t flags) { __asm__ volatile("msr fpsr, %0" : : "r"(flags)); }

#else

constexpr uint64_t kPlain = 0;

uint64_t ReadControl() { return 0; }
void WriteControl(uint64_t /*control*/) {}
uint64_t ReadFlags() { return 0; }
void WriteFlags(uint64_t /*flags*/) {}

#endif

// The x87 unit, where functions return doubles in its registers, and 64-bit whole numbers become doubles
// there. What it keeps beside those registers:
struct X87Environment {
    uint16_t control;
    uint16_t unused1;
    uint16_t status;
    uint16_t unused2;
    uint32_t others[5];
};

#if defined(__i386__)

constexpr uint16_t kPlainX87 = 0x37F;

X87Environment ReadX87() {
    X87Environment environment;
    // This masks all exceptions, by the way.
    __asm__ volatile("fnstenv %0" : "=m"(environment));
    return environment;
}
void WriteX87Control(uint16_t control) { __asm__ volatile("fldcw %0" : : "m"(control)); }
void WriteX87(const X87Environment& environment) { __asm__ volatile("fldenv %0" : : "m"(environment)); }

#else

constexpr uint16_t kPlainX87 = 0;

X87Environment ReadX87() { return {}; }
void WriteX87Control(uint16_t /*control*/) {}
void WriteX87(const X87Environment& /*environment*/) {}

#endif

}  // namespace

FloatingPointScope::FloatingPointScope() : controlBefore_(ReadControl()), flagsBefore_(ReadFlags()) {
    const X87Environment x87 = ReadX87();
    x87Before_ = {x87.control, x87.status};
    WriteControl(kPlain);
    WriteX87Control(kPlainX87);
}

// A flag raised in between must be gone before the host's traps are back: the x87 unit would stop the host at
// its next operation. Where the top of that unit's stack lies, in the status, is the compiler's, not ours.
FloatingPointScope::~FloatingPointScope() {
    constexpr uint16_t kX87Flags = 0xFF;
    WriteFlags(flagsBefore_);
    WriteControl(controlBefore_);
    X87Environment x87 = ReadX87();
    x87.control = x87Before_.control;
    x87.status = static_cast<uint16_t>((x87.status & ~kX87Flags) | (x87Before_.status & kX87Flags));
    WriteX87(x87);
}

}  // namespace vastrelline
