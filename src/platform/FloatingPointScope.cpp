#include "platform/FloatingPointScope.h"

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif

namespace vastrelline {

namespace {

#if defined(__x86_64__) || defined(__i386__)

constexpr uint64_t kPlain = 0x1F80;

uint64_t ReadControl() { return _mm_getcsr(); }
void WriteControl(uint64_t control) { _mm_setcsr(static_cast<uint32_t>(control)); }

#elif defined(__aarch64__)

constexpr uint64_t kPlain = 0;

uint64_t ReadControl() {
    uint64_t control = 0;
    __asm__ volatile("mrs %0, fpcr" : "=r"(control));
    return control;
}
void WriteControl(uint64_t control) { __asm__ volatile("msr fpcr, %0" : : "r"(control)); }

#else

constexpr uint64_t kPlain = 0;

uint64_t ReadControl() { return 0; }
void WriteControl(uint64_t /*control*/) {}

#endif

// Where functions return doubles in its registers, and 64-bit whole numbers become doubles there.
#if defined(__i386__)

constexpr uint16_t kPlainX87 = 0x37F;

uint16_t ReadX87() {
    uint16_t control = 0;
    __asm__ volatile("fnstcw %0" : "=m"(control));
    return control;
}
void WriteX87(uint16_t control) { __asm__ volatile("fldcw %0" : : "m"(control)); }

#else

constexpr uint16_t kPlainX87 = 0;

uint16_t ReadX87() { return 0; }
void WriteX87(uint16_t /*control*/) {}

#endif

}  // namespace

FloatingPointScope::FloatingPointScope() : before_(ReadControl()), x87Before_(ReadX87()) {
    WriteControl(kPlain);
    WriteX87(kPlainX87);
}

FloatingPointScope::~FloatingPointScope() {
    WriteControl(before_);
    WriteX87(x87Before_);
}

}  // namespace vastrelline
