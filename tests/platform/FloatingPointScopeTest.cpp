// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cfenv>

#include "platform/FloatingPointScope.h"

#if defined(__x86_64__)
#include <xmmintrin.h>
#endif

namespace vastrelline {
namespace {

// Kept from being computed by the compiler.
double Divide(double a, double b) {
    volatile double dividend = a;
    volatile double divisor = b;
    return dividend / divisor;
}

const double kThird = 0x1.5555555555555p-2;  // the nearest; the next one above ends in 6

class FloatingPointScopeTest : public testing::Test {
protected:
    void TearDown() override { std::fesetenv(&before_); }

private:
    struct KeptEnvironment : std::fenv_t {
        KeptEnvironment() { std::fegetenv(this); }
    };
    KeptEnvironment before_;
};

TEST_F(FloatingPointScopeTest, RoundsToNearestAndThenAsBefore) {
    ASSERT_EQ(std::fesetround(FE_UPWARD), 0);
    EXPECT_GT(Divide(1, 3), kThird);
    {
        const FloatingPointScope scope;
        EXPECT_EQ(Divide(1, 3), kThird);
    }
    EXPECT_GT(Divide(1, 3), kThird);
    EXPECT_EQ(std::fegetround(), FE_UPWARD);
}

TEST_F(FloatingPointScopeTest, NestedScopesRestoreInTurn) {
    ASSERT_EQ(std::fesetround(FE_DOWNWARD), 0);
    {
        const FloatingPointScope outer;
        ASSERT_EQ(std::fesetround(FE_UPWARD), 0);
        {
            const FloatingPointScope inner;
            EXPECT_EQ(Divide(1, 3), kThird);
        }
        EXPECT_GT(Divide(1, 3), kThird);
    }
    EXPECT_LT(Divide(-1, 3), -kThird);
}

// Raised before stays, raised in between goes: on some processors the flags have a register of their own.
TEST_F(FloatingPointScopeTest, LeavesTheFlagsAlone) {
    ASSERT_EQ(std::feclearexcept(FE_ALL_EXCEPT), 0);
    ASSERT_EQ(std::feraiseexcept(FE_INEXACT), 0);
    double quotient = 0;
    {
        const FloatingPointScope scope;
        quotient = Divide(1, 0) + Divide(0, 0);
    }
    EXPECT_EQ(std::fetestexcept(FE_ALL_EXCEPT), FE_INEXACT);
    EXPECT_NE(quotient, quotient);
}

#if defined(__i386__)

// Behind the scope the x87 unit finds no flag that the host's traps would take for one of its own: the first
// of its operations there would stop the program.
TEST_F(FloatingPointScopeTest, TrapsNothingOfTheX87UnitThereafter) {
    constexpr uint16_t kZeroDivideTraps = 0x37B;
    constexpr uint16_t kNothingTraps = 0x37F;
    uint16_t inScope = 0;
    uint16_t after = 0;
    uint16_t status = 0;
    __asm__ volatile("fnclex; fldcw %0" : : "m"(kZeroDivideTraps));
    {
        const FloatingPointScope scope;
        __asm__ volatile("fnstcw %0" : "=m"(inScope));
        __asm__ volatile("fld1; fldz; fdivrp; fstp %%st(0)" : : : "st", "st(1)");
    }
    __asm__ volatile("fwait; fnstcw %0; fnstsw %1" : "=m"(after), "=m"(status));
    __asm__ volatile("fnclex; fldcw %0" : : "m"(kNothingTraps));
    EXPECT_EQ(inScope, kNothingTraps);
    EXPECT_EQ(after, kZeroDivideTraps);
    EXPECT_EQ(status & 0xFF, 0);
}

#endif

#if defined(__x86_64__)

constexpr uint32_t kFlush = 0x8040;
constexpr uint32_t kMasks = 0x1F80;

TEST_F(FloatingPointScopeTest, KeepsSubnormalNumbers) {
    _mm_setcsr(_mm_getcsr() | kFlush);
    EXPECT_EQ(Divide(0x1p-1022, 4), 0);
    {
        const FloatingPointScope scope;
        EXPECT_EQ(Divide(0x1p-1022, 4), 0x1p-1024);
    }
    EXPECT_EQ(_mm_getcsr() & kFlush, kFlush);
}

TEST_F(FloatingPointScopeTest, TrapsNothingAndRaisesNoFlag) {
    _mm_setcsr(0);  // every exception would be a signal
    double quotient = 0;
    uint32_t after = 0;
    {
        const FloatingPointScope scope;
        quotient = Divide(1, 0) + Divide(0, 0) + Divide(1, 3);
    }
    after = _mm_getcsr();
    _mm_setcsr(kMasks);
    EXPECT_NE(quotient, quotient);
    EXPECT_EQ(after, 0U);
}

#endif

}  // namespace
}  // namespace vastrelline
