// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

#include "elementary/Exponential.h"
#include "elementary/HyperbolicTangent.h"
#include "elementary/Logarithm.h"
#include "elementary/Power.h"
#include "elementary/SignedSum.h"
#include "elementary/SineCosine.h"
#include "elementary/WideTurn.h"

namespace vastrelline {
namespace {

constexpr int kCount = 3000;

class Arguments {
public:
    double Between(double from, double to) {
        return from + (to - from) * std::ldexp(static_cast<double>(random_() >> 11), -53);
    }
    // Of any size between two powers of two.
    double OfSize(int from, int to) {
        const int place = from + static_cast<int>(random_() % static_cast<uint64_t>(to - from));
        return std::ldexp(Between(1, 2), place);
    }

private:
    std::mt19937_64 random_{20260501};
};

WideValue PowerByDefinition(double base, double exponent) {
    const DoubleParts parts = SplitDouble(exponent);
    const WideValue logarithm = WideLog(base);
    return WideExp({(logarithm.magnitude * WideNumber(parts.magnitude)).Shifted(parts.exponent), 0,
                    logarithm.isNegative != parts.isNegative});
}

// The error of two parts as a share of the value.
double ErrorShare(const DoubleDouble& pair, int exponent, const WideValue& value) {
    WideValue sum = SumOf({pair.high, pair.low});
    sum.exponent = exponent - value.exponent;
    const WideValue error = SignedSum(sum, {value.magnitude, 0, !value.isNegative});
    return RoundToDouble({error.magnitude / value.magnitude, 0, false});
}

TEST(FastForms, OfExp) {
    Arguments arguments;
    for (int i = 0; i < kCount; ++i) {
        for (const double x :
             {arguments.Between(-744, 709.7), arguments.OfSize(-60, 3), -arguments.OfSize(-60, 3)}) {
            EXPECT_EQ(Exp(x), RoundToDouble(WideExp(WideFromDouble(x)))) << x;
        }
        const auto x = static_cast<float>(arguments.Between(-100, 88));
        EXPECT_EQ(Exp(x), RoundToFloat(WideExp(WideFromDouble(x)))) << x;
    }
}

TEST(FastForms, OfExpTimesAFactor) {
    Arguments arguments;
    for (int i = 0; i < 100 * kCount; ++i) {
        const double x = arguments.Between(-30, 5);
        const double factor = arguments.Between(0.001, 3);
        EXPECT_EQ(ExpTimes(x, factor), static_cast<float>(Exp(x) * factor)) << x << ' ' << factor;
    }
    for (const double x : {-1000.0, -745.0, -720.0, -110.0, -103.0, 88.0, 89.0, 709.75, 1000.0})
        EXPECT_EQ(ExpTimes(x, 0.75), static_cast<float>(Exp(x) * 0.75)) << x;
}

TEST(FastForms, OfExpNearly) {
    Arguments arguments;
    double worst = 0;
    for (int i = 0; i < 100 * kCount; ++i) {
        const double x = arguments.Between(-708, 709.7);
        worst = std::max(worst, std::abs(NearlyExp(x) / Exp(x) - 1));
    }
    EXPECT_LT(worst, kNearlyExpError);
}

// Floats go a way of their own, and where it does not tell, that of the doubles.
TEST(FastForms, OfFloats) {
    Arguments arguments;
    for (int i = 0; i < 100 * kCount; ++i) {
        const auto x = static_cast<float>(arguments.Between(-104, 89));
        EXPECT_EQ(Exp(x), static_cast<float>(Exp(double{x}))) << x;
        const auto base = static_cast<float>(arguments.Between(0, 1));
        const auto exponent = static_cast<float>(arguments.Between(0.01, 1.5));
        EXPECT_EQ(Pow(base, exponent), static_cast<float>(Pow(double{base}, double{exponent})))
            << base << ' ' << exponent;
    }
}

TEST(FastForms, OfLog) {
    Arguments arguments;
    for (int i = 0; i < kCount; ++i) {
        for (const double x :
             {arguments.OfSize(-1060, 1020), arguments.Between(0.5, 2), arguments.Between(0.99, 1.01),
              1 + arguments.OfSize(-52, -10), 1 - arguments.OfSize(-52, -10)}) {
            EXPECT_EQ(Log(x), RoundToDouble(WideLog(x))) << x;
        }
        const auto x = static_cast<float>(arguments.Between(0, 65536));
        EXPECT_EQ(Log(x), RoundToFloat(WideLog(x))) << x;
    }
}

TEST(FastForms, OfPow) {
    Arguments arguments;
    for (int i = 0; i < kCount; ++i) {
        const double share = arguments.Between(0, 1);
        const double gamma = arguments.Between(0.01, 10);
        EXPECT_EQ(Pow(share, gamma), RoundToDouble(PowerByDefinition(share, gamma))) << share << ' ' << gamma;
        const double base = arguments.OfSize(-50, 50);
        const double exponent = arguments.Between(-10, 10);
        EXPECT_EQ(Pow(base, exponent), RoundToDouble(PowerByDefinition(base, exponent)))
            << base << ' ' << exponent;
        const auto level = static_cast<double>(2 + i % 400);
        const double times = i % 37 - 10;
        if (times != 0) {
            EXPECT_EQ(Pow(level, times), RoundToDouble(PowerByDefinition(level, times)))
                << level << ' ' << times;
        }
        const auto shareF = static_cast<float>(share);
        const auto gammaF = static_cast<float>(gamma);
        EXPECT_EQ(Pow(shareF, gammaF), RoundToFloat(PowerByDefinition(shareF, gammaF)))
            << shareF << ' ' << gammaF;
    }
}

TEST(FastForms, OfSinAndCos) {
    Arguments arguments;
    for (int i = 0; i < kCount; ++i) {
        for (const double x :
             {arguments.Between(-7, 7), arguments.OfSize(-27, 20), arguments.OfSize(15, 1020)}) {
            EXPECT_EQ(Sin(x), RoundToDouble(WideSin(x))) << x;
            EXPECT_EQ(Cos(x), RoundToDouble(WideCos(x))) << x;
        }
    }
}

// Near multiples of a quarter turn the reduced angle loses its bits.
TEST(FastForms, OfSinAndCosNearZeros) {
    constexpr double kQuarterTurn = 0x1.921fb54442d18p0;
    for (int i = 1; i < kCount; ++i) {
        for (const double x :
             {kQuarterTurn * i, std::nextafter(kQuarterTurn * i, 0), kQuarterTurn * i + 0x1p-21}) {
            EXPECT_EQ(Sin(x), RoundToDouble(WideSin(x))) << x;
            EXPECT_EQ(Cos(x), RoundToDouble(WideCos(x))) << x;
        }
    }
}

// What the tests of rounding rely on.
TEST(FastForms, PairsAreAsPreciseAsSaid) {
    Arguments arguments;
    double power = 0;
    double logarithm = 0;
    double sine = 0;
    for (int i = 0; i < kCount; ++i) {
        const double x = arguments.Between(-708, 709.7);
        const ScaledPower scaled = ExpInPairs({x, 0});
        power = std::max(power, ErrorShare(scaled.significand, scaled.exponent, WideExp(WideFromDouble(x))));
        for (const double y :
             {arguments.OfSize(-300, 300), arguments.Between(0.98, 1.02), 1 + arguments.OfSize(-40, -7)}) {
            logarithm = std::max(logarithm, ErrorShare(LogInPairs(y), 0, WideLog(y)));
        }
        // The least sines that are no rests alone have the largest errors.
        for (const double y : {arguments.Between(-7, 7), arguments.Between(0.012, 0.05),
                               arguments.OfSize(-27, -4), arguments.Between(-32768, 32768)}) {
            if (std::abs(Sin(y)) >= 0x1p-20 || std::abs(y) <= 0x1p-20)
                sine = std::max(sine, ErrorShare(SinInPairs(y), 0, WideSin(y)));
            if (std::abs(Cos(y)) >= 0x1p-20) sine = std::max(sine, ErrorShare(CosInPairs(y), 0, WideCos(y)));
        }
    }
    EXPECT_LT(power, kExpInPairsError);
    EXPECT_LT(logarithm, kLogInPairsError);
    EXPECT_LT(sine, kSinInPairsError);
    // And not by so much that the bounds could be wrong unseen.
    EXPECT_GT(power, kExpInPairsError / 64);
    EXPECT_GT(logarithm, kLogInPairsError / 64);
    EXPECT_GT(sine, kSinInPairsError / 4);
}

}  // namespace
}  // namespace vastrelline
