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

TEST_F(FloatingPointScopeTest, TrapsNothingAndLeavesTheFlagsAlone) {
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
