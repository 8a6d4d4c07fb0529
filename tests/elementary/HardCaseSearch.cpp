// SPDX-License-Identifier: Apache-2.0

// Looks for arguments whose results lie all but halfway between two neighbours, where rounding is hard, and
// prints the hardest as rows of the table of HardCases.cpp. Not a test: how the table was found.
//
//     hard_case_search FUNCTION SECONDS ROWS
//
// Doubles: random blocks of neighbouring arguments. Within one, the function is a polynomial of degree 2 to
// some 2^-60 of a last place, so that the exact differences of its first three results give each next one,
// modulo a last place, by two additions of whole numbers: a thousand million arguments in a second or two.
// Floats: all of them, or random pairs for powers, by the C library in doubles, whose last 29 bits tell. What
// looks hard is measured by MPFR.
#include <algorithm>
#include <array>
#include <bit>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "EachFunction.h"
#include "HardCases.h"
#include "ReferenceValue.h"

namespace vastrelline {
namespace {

constexpr mpfr_prec_t kBits = 400;

// Where a function of doubles is asked.
struct Range {
    int lowestBinade;
    int highestBinade;
    double largest;
    bool isAlsoNegative;
};

Range RangeOf(Elementary function) {
    switch (function) {
        case Elementary::Exp:
            return {-12, 9, 708.0, true};
        case Elementary::Log:
            return {-20, 20, 0x1p21, false};
        case Elementary::Pow:
            return {-17, 16, 0x1p17, false};
        case Elementary::Tanh:
            return {-10, 4, 18.0, false};
        default:
            return {-10, 6, 0x1p7, false};
    }
}

// A fraction of a last place, in 2^-128.
struct Fraction {
    uint64_t high;
    uint64_t low;

    void operator+=(const Fraction& other) {
        low += other.low;
        high += other.high + (low < other.low ? 1 : 0);
    }
};

// What stands behind the point, counted up from the whole number below.
Fraction FractionOf(mpfr_srcptr places) {
    ReferenceNumber rest(kBits);
    ReferenceNumber whole(kBits);
    std::array<uint64_t, 4> words{};
    mpfr_floor(whole.Get(), places);
    mpfr_sub(rest.Get(), places, whole.Get(), MPFR_RNDN);
    for (uint64_t& word : words) {
        mpfr_mul_2ui(rest.Get(), rest.Get(), 32, MPFR_RNDN);
        mpfr_floor(whole.Get(), rest.Get());
        mpfr_sub(rest.Get(), rest.Get(), whole.Get(), MPFR_RNDN);
        word = mpfr_get_ui(whole.Get(), MPFR_RNDN);
    }
    return {words[0] << 32 | words[1], words[2] << 32 | words[3]};
}

class Search {
public:
    Search(Elementary function, double seconds, size_t rows)
        : function_(function),
          rows_(rows),
          end_(std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds)) {}

    std::vector<HardCase> Run() {
        if (!IsOfFloats(function_)) {
            while (!IsOver()) TryBlock();
        } else if (function_ == Elementary::PowFloat) {
            while (!IsOver()) TryPowersOfFloats();
        } else {
            TryAllFloats();
        }
        KeepHardest();
        return cases_;
    }

private:
    bool IsOver() const { return std::chrono::steady_clock::now() >= end_; }

    void Keep(const Arguments& arguments) {
        const double result = ReferenceResult(function_, arguments);
        cases_.push_back({function_, arguments, result, DistanceBits(function_, arguments)});
        if (cases_.size() > 100 * rows_) KeepHardest();
    }

    void KeepHardest() {
        std::stable_sort(cases_.begin(), cases_.end(), [](const HardCase& a, const HardCase& b) {
            return a.distanceBits > b.distanceBits;
        });
        if (cases_.size() > rows_) cases_.resize(rows_);
    }

    Arguments PickBlock() {
        const Range range = RangeOf(function_);
        std::uniform_int_distribution<int> binade(range.lowestBinade, range.highestBinade);
        Arguments first{0.0, 0.0};
        do {
            first.x = std::ldexp(1 + static_cast<double>(random_() >> 12) * 0x1p-52, binade(random_));
        } while (first.x >= range.largest);
        if (range.isAlsoNegative && random_() % 2 == 0) first.x = -first.x;
        if (function_ == Elementary::Pow) first.y = static_cast<double>(random_() % 20000) / 2048 - 3;
        return first;
    }

    void TryBlock() {
        constexpr uint64_t kLength = 1 << 15;
        const Arguments block = PickBlock();
        const auto first = std::bit_cast<uint64_t>(block.x);
        std::array<ReferenceNumber, 4> results{ReferenceNumber(kBits), ReferenceNumber(kBits),
                                               ReferenceNumber(kBits), ReferenceNumber(kBits)};
        ReferenceNumber x(kBits);
        ReferenceNumber y(kBits);
        mpfr_set_d(y.Get(), block.y, MPFR_RNDN);
        const std::array<uint64_t, 4> steps{0, 1, 2, kLength};
        for (size_t i = 0; i < results.size(); ++i) {
            mpfr_set_d(x.Get(), std::bit_cast<double>(first + steps[i]), MPFR_RNDN);
            ApplyReference(function_, results[i].Get(), x.Get(), y.Get());
        }
        // One last place for the whole block.
        const mpfr_exp_t top = mpfr_get_exp(results[0].Get());
        if (top != mpfr_get_exp(results[3].Get()) || std::abs(static_cast<int>(top)) > 1000) return;
        for (ReferenceNumber& result : results) mpfr_mul_2si(result.Get(), result.Get(), 53 - top, MPFR_RNDN);
        Fraction place = FractionOf(results[0].Get());
        mpfr_sub(results[0].Get(), results[1].Get(), results[0].Get(), MPFR_RNDN);
        mpfr_sub(results[1].Get(), results[2].Get(), results[1].Get(), MPFR_RNDN);
        mpfr_sub(results[1].Get(), results[1].Get(), results[0].Get(), MPFR_RNDN);
        Fraction step = FractionOf(results[0].Get());
        const Fraction stepOfStep = FractionOf(results[1].Get());
        constexpr uint64_t kNear = uint64_t{1} << (64 - 30);
        constexpr uint64_t kHalf = uint64_t{1} << 63;
        for (uint64_t i = 0; i < kLength; ++i) {
            if (place.high - kHalf + kNear < 2 * kNear) Keep({std::bit_cast<double>(first + i), block.y});
            place += step;
            step += stepOfStep;
        }
    }

    // By a result in doubles, whose last 29 bits are behind a float's.
    void TryFloat(const Arguments& arguments, double result) {
        constexpr uint64_t kMask = (uint64_t{1} << 29) - 1;
        constexpr uint64_t kHalf = uint64_t{1} << 28;
        constexpr uint64_t kNear = 64;
        if (!(std::fabs(result) > 0x1p-126 && std::fabs(result) < 0x1p127)) return;
        if ((std::bit_cast<uint64_t>(result) & kMask) - kHalf + kNear < 2 * kNear) Keep(arguments);
    }

    void TryPowersOfFloats() {
        for (int i = 0; i < 10000; ++i) {
            const float x =
                static_cast<float>(1 + random_() % 65535) / static_cast<float>(1 + random_() % 65535);
            const float y = static_cast<float>(random_() % 65536) / 65536.0F * 5.0F - 1.0F;
            const Arguments arguments{static_cast<double>(x), static_cast<double>(y)};
            TryFloat(arguments, std::pow(arguments.x, arguments.y));
        }
    }

    void TryAllFloats() {
        for (uint64_t bits = 0; bits < uint64_t{1} << 32; ++bits) {
            const auto x = static_cast<double>(std::bit_cast<float>(static_cast<uint32_t>(bits)));
            TryFloat({x, 0.0}, function_ == Elementary::ExpFloat ? std::exp(x) : std::log(x));
        }
    }

    Elementary function_;
    size_t rows_;
    std::chrono::time_point<std::chrono::steady_clock, std::chrono::duration<double>> end_;
    std::mt19937_64 random_{16};
    std::vector<HardCase> cases_;
};

int Print(const char* name, double seconds, size_t rows) {
    const auto* const found =
        std::find_if(kEachFunction.begin(), kEachFunction.end(),
                     [&](Elementary function) { return NameOf(function) == std::string(name); });
    if (found == kEachFunction.end()) return 2;
    for (const HardCase& one : Search(*found, seconds, rows).Run()) {
        std::printf("    {Elementary::%s, {%a, %a}, %a, %d},\n", name, one.arguments.x, one.arguments.y,
                    one.result, one.distanceBits);
    }
    return 0;
}

}  // namespace
}  // namespace vastrelline

int main(int count, char** arguments) {
    if (count == 4) {
        return vastrelline::Print(arguments[1], std::atof(arguments[2]),
                                  static_cast<size_t>(std::max(1, std::atoi(arguments[3]))));
    }
    std::fprintf(
        stderr, "usage: hard_case_search Exp|ExpFloat|Log|LogFloat|Pow|PowFloat|Sin|Cos|Tanh SECONDS ROWS\n");
    return 2;
}
