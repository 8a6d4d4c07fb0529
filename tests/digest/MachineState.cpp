// SPDX-License-Identifier: Apache-2.0
#include "MachineState.h"

#include <cfenv>
#include <clocale>
#include <cstdint>
#include <exception>
#include <locale>
#include <string_view>

namespace vastrelline::digest {

namespace {

#if defined(__x86_64__) || defined(__i386__)

constexpr bool kHasX87 = true;

uint16_t X87Control() {
    uint16_t control = 0;
    __asm__ volatile("fnstcw %0" : "=m"(control));
    return control;
}

void SetX87Control(uint16_t control) { __asm__ volatile("fldcw %0" : : "m"(control)); }

void SetX87Double(bool isOn) {
    constexpr uint32_t kPrecision = 0x300;
    constexpr uint32_t kDouble = 0x200;
    const uint32_t others = X87Control() & ~kPrecision;
    SetX87Control(static_cast<uint16_t>(others | (isOn ? kDouble : kPrecision)));
}

void SetFlush(bool isOn) {
    constexpr uint32_t kFlush = 0x8040;  // results, and operands
    uint32_t control = 0;
    __asm__ volatile("stmxcsr %0" : "=m"(control));
    control = isOn ? control | kFlush : control & ~kFlush;
    __asm__ volatile("ldmxcsr %0" : : "m"(control));
}

constexpr bool kHasFlush = true;

#elif defined(__aarch64__)

constexpr bool kHasX87 = false;
constexpr bool kHasFlush = true;

void SetX87Double(bool /*isOn*/) {}

void SetFlush(bool isOn) {
    constexpr uint64_t kFlush = uint64_t{1} << 24U;
    uint64_t control = 0;
    __asm__ volatile("mrs %0, fpcr" : "=r"(control));
    control = isOn ? control | kFlush : control & ~kFlush;
    __asm__ volatile("msr fpcr, %0" : : "r"(control));
}

#else

constexpr bool kHasX87 = false;
constexpr bool kHasFlush = false;

void SetX87Double(bool /*isOn*/) {}
void SetFlush(bool /*isOn*/) {}

#endif

}  // namespace

bool CanHave(const HostHabits& habits) {
    return (kHasX87 || !habits.x87Double) && (kHasFlush || !habits.flushesDenormals);
}

ScopedHabits::ScopedHabits(const HostHabits& habits) : habits_(habits) {
    if (habits_.x87Double) SetX87Double(true);
    if (habits_.roundsUp) std::fesetround(FE_UPWARD);
    if (habits_.flushesDenormals) SetFlush(true);
}

ScopedHabits::~ScopedHabits() {
    if (habits_.x87Double) SetX87Double(false);
    if (habits_.roundsUp) std::fesetround(FE_TONEAREST);
    if (habits_.flushesDenormals) SetFlush(false);
}

bool SetCommaLocale(const char* name) {
    try {
        std::locale::global(std::locale(name));
    } catch (const std::exception&) {
        // Some standard libraries know their own locale only; C knows more.
    }
    return std::setlocale(LC_ALL, name) != nullptr &&
           std::string_view(std::localeconv()->decimal_point) == ",";
}

}  // namespace vastrelline::digest
