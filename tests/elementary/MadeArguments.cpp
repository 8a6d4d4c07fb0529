// SPDX-License-Identifier: Apache-2.0
#include "MadeArguments.h"

#include <array>
#include <bit>
#include <cassert>
#include <cmath>
#include <limits>
#include <random>
#include <span>

namespace vastrelline {

namespace {

// Its numbers are fixed by the standard; those of the standard's distributions are not.
using Random = std::mt19937_64;

// All operations below are exact, or of whole numbers: no rounding, so no machine's way of rounding.

uint64_t UpTo(Random& random, uint64_t top) { return random() % (top + 1); }

int64_t Between(Random& random, int64_t low, int64_t high) {
    return low + static_cast<int64_t>(UpTo(random, static_cast<uint64_t>(high - low)));
}

double WithRandomSign(Random& random, double value) { return random() % 2 == 0 ? value : -value; }

// From 0 up to a limit of at most 2^exponent.
double Below(Random& random, double limit, int exponent) {
    for (;;) {
        const double value = std::ldexp(static_cast<double>(random() >> 11), exponent - 53);
        if (value < limit) return value;
    }
}

// Between whole numbers of at most 2^10.
double InRange(Random& random, int64_t low, int64_t high) {
    constexpr int kPlaces = 43;
    return std::ldexp(static_cast<double>(Between(random, low << kPlaces, high << kPlaces)), -kPlaces);
}

// From 2^low on and below 2^(high + 1), each power of two as often as any other.
double OfBinades(Random& random, int low, int high) {
    const auto whole = static_cast<double>((uint64_t{1} << 52) + (random() >> 12));
    return std::ldexp(whole, static_cast<int>(Between(random, low, high)) - 52);
}

// Any double; of what is no number, quiet ones only, for signals are lost on the way into some functions.
double AnyDouble(Random& random) {
    const double value = std::bit_cast<double>(random());
    return std::isnan(value) ? std::numeric_limits<double>::quiet_NaN() : value;
}

double AnyFloat(Random& random) {
    const auto value = std::bit_cast<float>(static_cast<uint32_t>(random()));
    return std::isnan(value) ? std::numeric_limits<double>::quiet_NaN() : static_cast<double>(value);
}

double Subnormal(Random& random) { return std::bit_cast<double>(random() >> 12); }

// So many last places away.
double Beside(double value, int64_t places) {
    return std::bit_cast<double>(std::bit_cast<uint64_t>(value) + static_cast<uint64_t>(places));
}

// The nearest float, as every conversion of a double gives it; an infinity where there is none.
double Narrow(double value) { return static_cast<double>(static_cast<float>(value)); }

// A level by a peak, as fractions of white are made, cut off behind 47 places.
double LevelByPeak(Random& random) {
    const uint64_t peak =
        Between(random, 0, 1) == 0 ? 65535 : static_cast<uint64_t>(Between(random, 1, 65535));
    const uint64_t level = UpTo(random, peak);
    return std::ldexp(static_cast<double>((level << 47) / peak), -47);
}

using Make = Arguments (*)(Random& random);

constexpr Make kOfExp[] = {
    [](Random& random) {
        return Arguments{-Below(random, 8, 3), 0};
    },  // bells: -x^2 / (2 * sigma^2)
    [](Random& random) {
        return Arguments{-Below(random, 64, 6), 0};
    },  // their far ends
    [](Random& random) {
        return Arguments{WithRandomSign(random, Below(random, 40, 6)), 0};
    },  // sigmoids
    [](Random& random) {
        return Arguments{WithRandomSign(random, Below(random, 746, 10)), 0};
    },
    [](Random& random) {
        return Arguments{WithRandomSign(random, OfBinades(random, -60, 9)), 0};
    },
    [](Random& random) {
        return Arguments{-InRange(random, 708, 746), 0};
    },  // subnormal results
    [](Random& random) {
        return Arguments{AnyDouble(random), 0};
    },
};

constexpr Make kOfExpFloat[] = {
    [](Random& random) {
        return Arguments{Narrow(-Below(random, 32, 5)), 0};
    },
    [](Random& random) {
        return Arguments{Narrow(WithRandomSign(random, Below(random, 104, 7))), 0};
    },
    [](Random& random) {
        return Arguments{Narrow(-InRange(random, 87, 105)), 0};
    },
    [](Random& random) {
        return Arguments{Narrow(WithRandomSign(random, OfBinades(random, -30, 6))), 0};
    },
    [](Random& random) {
        return Arguments{AnyFloat(random), 0};
    },
};

constexpr Make kOfLog[] = {
    [](Random& random) {
        return Arguments{static_cast<double>(UpTo(random, 65536)), 0};
    },
    [](Random& random) {
        return Arguments{static_cast<double>(UpTo(random, 0xFFFFFFFF)), 0};
    },
    [](Random& random) {
        return Arguments{LevelByPeak(random), 0};
    },
    [](Random& random) {
        return Arguments{Beside(1.0, Between(random, -1000000, 1000000)), 0};
    },
    [](Random& random) {
        return Arguments{OfBinades(random, -2, 1), 0};
    },
    [](Random& random) {
        return Arguments{OfBinades(random, -1022, 1023), 0};
    },
    [](Random& random) {
        return Arguments{Subnormal(random), 0};
    },
    [](Random& random) {
        return Arguments{AnyDouble(random), 0};
    },
};

constexpr Make kOfLogFloat[] = {
    [](Random& random) {
        return Arguments{Narrow(static_cast<double>(UpTo(random, 65536))), 0};
    },
    [](Random& random) {
        return Arguments{Narrow(LevelByPeak(random)), 0};
    },
    [](Random& random) {
        return Arguments{Narrow(OfBinades(random, -2, 1)), 0};
    },
    [](Random& random) {
        return Arguments{Narrow(OfBinades(random, -149, 127)), 0};
    },
    [](Random& random) {
        return Arguments{AnyFloat(random), 0};
    },
};

constexpr Make kOfPow[] = {
    // Gammas.
    [](Random& random) {
        return Arguments{LevelByPeak(random), Below(random, 8, 3)};
    },
    [](Random& random) {
        return Arguments{LevelByPeak(random), static_cast<double>(UpTo(random, 80)) / 16};
    },
    [](Random& random) {
        return Arguments{OfBinades(random, -16, 4), WithRandomSign(random, Below(random, 8, 3))};
    },
    // Whole numbers, whose powers are whole numbers, too: many are exact, and some end in exactly a half.
    [](Random& random) {
        return Arguments{static_cast<double>(Between(random, -2000, 2000)),
                         static_cast<double>(UpTo(random, 40))};
    },
    [](Random& random) {
        const int64_t base = Between(random, -(int64_t{1} << 30), int64_t{1} << 30);
        return Arguments{static_cast<double>(base), static_cast<double>(Between(random, -3, 3))};
    },
    // Roots of squares and of fourth powers.
    [](Random& random) {
        const auto root = static_cast<double>(UpTo(random, (uint64_t{1} << 26) - 1));
        return Arguments{root * root, static_cast<double>(Between(random, -6, 6)) / 4};
    },
    // Near 1, to large powers.
    [](Random& random) {
        const double x = Beside(1.0, Between(random, -1000000, 1000000));
        return Arguments{x, WithRandomSign(random, OfBinades(random, 0, 44))};
    },
    // All sizes of results, subnormal ones among them.
    [](Random& random) {
        const int64_t top = Between(random, 1, 300);
        const double x = OfBinades(random, static_cast<int>(-top), static_cast<int>(-top));
        const int64_t power = Between(random, -1030, 1080) * 16 / top;
        return Arguments{x, static_cast<double>(power) / 16};
    },
    [](Random& random) {
        return Arguments{OfBinades(random, -500, 500), OfBinades(random, -12, 1)};
    },
    [](Random& random) {
        return Arguments{Subnormal(random), WithRandomSign(random, Below(random, 2, 1))};
    },
    [](Random& random) {
        return Arguments{AnyDouble(random), static_cast<double>(Between(random, -4, 4))};
    },
    [](Random& random) {
        return Arguments{AnyDouble(random), AnyDouble(random)};
    },
};

constexpr Make kOfPowFloat[] = {
    [](Random& random) {
        return Arguments{Narrow(LevelByPeak(random)), Narrow(Below(random, 2, 1))};
    },
    [](Random& random) {
        return Arguments{1.5, Narrow(WithRandomSign(random, Below(random, 1, 0)))};
    },
    [](Random& random) {
        return Arguments{Narrow(LevelByPeak(random)), Narrow(WithRandomSign(random, Below(random, 8, 3)))};
    },
    [](Random& random) {
        return Arguments{static_cast<double>(Between(random, -2000, 2000)),
                         static_cast<double>(Between(random, -3, 12))};
    },
    [](Random& random) {
        const int64_t top = Between(random, 1, 40);
        const double x = Narrow(OfBinades(random, static_cast<int>(-top), static_cast<int>(-top)));
        const int64_t power = Between(random, -130, 152) * 16 / top;
        return Arguments{x, static_cast<double>(power) / 16};
    },
    [](Random& random) {
        return Arguments{AnyFloat(random), Narrow(static_cast<double>(Between(random, -4, 4)))};
    },
    [](Random& random) {
        return Arguments{AnyFloat(random), AnyFloat(random)};
    },
};

// A multiple of the double that is nearest to a quarter of a turn, or a neighbour of it.
Arguments BesideAxis(Random& random) {
    constexpr double kQuarterTurn = 0x1.921fb54442d18p+0;
    const double axis = std::ldexp(kQuarterTurn, static_cast<int>(Between(random, 0, 60)));
    return {WithRandomSign(random, Beside(axis, Between(random, -64, 64))), 0};
}

constexpr Make kOfSin[] = {
    [](Random& random) {
        return Arguments{Below(random, 8, 3), 0};
    },  // a turn and a bit
    [](Random& random) {
        return Arguments{WithRandomSign(random, Below(random, 2, 1)), 0};
    },
    [](Random& random) {
        return Arguments{WithRandomSign(random, OfBinades(random, -40, 3)), 0};
    },
    [](Random& random) {
        return Arguments{WithRandomSign(random, OfBinades(random, 3, 40)), 0};
    },
    [](Random& random) {
        return Arguments{static_cast<double>(UpTo(random, 1000000)), 0};
    },
    BesideAxis,
    [](Random& random) {
        return Arguments{OfBinades(random, -1022, 1023), 0};
    },
    [](Random& random) {
        return Arguments{AnyDouble(random), 0};
    },
};

constexpr Make kOfTanh[] = {
    [](Random& random) {
        return Arguments{Below(random, 5, 3), 0};
    },  // weights of layers
    [](Random& random) {
        return Arguments{WithRandomSign(random, Below(random, 24, 5)), 0};
    },
    [](Random& random) {
        return Arguments{WithRandomSign(random, OfBinades(random, -40, 5)), 0};
    },
    [](Random& random) {
        return Arguments{Subnormal(random), 0};
    },
    [](Random& random) {
        return Arguments{AnyDouble(random), 0};
    },
};

std::span<const Make> MakersOf(Elementary function) {
    switch (function) {
        case Elementary::Exp:
            return kOfExp;
        case Elementary::ExpFloat:
            return kOfExpFloat;
        case Elementary::Log:
            return kOfLog;
        case Elementary::LogFloat:
            return kOfLogFloat;
        case Elementary::Pow:
            return kOfPow;
        case Elementary::PowFloat:
            return kOfPowFloat;
        case Elementary::Sin:
        case Elementary::Cos:
            return kOfSin;
        case Elementary::Tanh:
            return kOfTanh;
    }
    return {};
}

}  // namespace

std::vector<Arguments> MakeArguments(Elementary function, size_t count) {
    Random random(20240501 + static_cast<uint64_t>(function));
    const std::span<const Make> makers = MakersOf(function);
    std::vector<Arguments> made;
    made.reserve(count);
    for (size_t i = 0; i < count; ++i) made.push_back(makers[i % makers.size()](random));
    return made;
}

void ResultSum::Add(double result) {
    constexpr uint64_t kPrime = 0x100000001b3;
    const uint64_t bits = BitsOf(result);
    for (int shift = 0; shift < 64; shift += 8) value_ = (value_ ^ (bits >> shift & 0xff)) * kPrime;
}

uint64_t ExpectedSum(Elementary function, size_t count) {
    struct Sums {
        uint64_t ofAll;
        uint64_t ofFew;
    };
    constexpr std::array<Sums, kEachFunction.size()> kSums{{
        {0x7da28623b73d2828, 0x72603b357bea5ad8},  // Exp
        {0xe144fe87530eb67e, 0xa158baaebbd93c05},  // ExpFloat
        {0xb3b2e1315cccb550, 0xc0b499147bfa20b1},  // Log
        {0xad1a9d9b7dc2be59, 0xa90f705a8ee58f85},  // LogFloat
        {0x3d38d39b6cda0258, 0x30c0b500e2746aa2},  // Pow
        {0x78bddaba8db3670c, 0x926784260667f005},  // PowFloat
        {0x0f8313557a881d07, 0xe841fa2806dbdce6},  // Sin
        {0x32895e0fbc6a9a26, 0x4229e1fc4f393560},  // Cos
        {0xbb13a9cbf183d29d, 0x689dd552f5a5eae5},  // Tanh
    }};
    assert(count == kMadeArguments || count == kFewArguments);
    const Sums& sums = kSums.at(static_cast<size_t>(function));
    return count == kMadeArguments ? sums.ofAll : sums.ofFew;
}

}  // namespace vastrelline
