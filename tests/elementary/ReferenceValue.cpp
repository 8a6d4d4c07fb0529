// SPDX-License-Identifier: Apache-2.0
#include "ReferenceValue.h"

#include <limits>

namespace vastrelline {

namespace {

// Exponents of a number from 1/2 to 1: of the smallest subnormal and of the largest number.
struct Format {
    mpfr_prec_t bits;
    mpfr_exp_t lowest;
    mpfr_exp_t highest;
};
constexpr Format kDouble{53, -1073, 1024};
constexpr Format kFloat{24, -148, 128};

Format FormatOf(Elementary function) { return IsOfFloats(function) ? kFloat : kDouble; }

}  // namespace

int ApplyReference(Elementary function, mpfr_ptr result, mpfr_srcptr x, mpfr_srcptr y) {
    switch (function) {
        case Elementary::Exp:
        case Elementary::ExpFloat:
            return mpfr_exp(result, x, MPFR_RNDN);
        case Elementary::Log:
        case Elementary::LogFloat:
            return mpfr_log(result, x, MPFR_RNDN);
        case Elementary::Pow:
        case Elementary::PowFloat:
            return mpfr_pow(result, x, y, MPFR_RNDN);
        case Elementary::Sin:
            return mpfr_sin(result, x, MPFR_RNDN);
        case Elementary::Cos:
            return mpfr_cos(result, x, MPFR_RNDN);
        case Elementary::Tanh:
            return mpfr_tanh(result, x, MPFR_RNDN);
    }
    return 0;
}

double ReferenceResult(Elementary function, const Arguments& arguments) {
    const Format format = FormatOf(function);
    mpfr_set_emin(format.lowest);
    mpfr_set_emax(format.highest);
    ReferenceNumber x(format.bits);
    ReferenceNumber y(format.bits);
    ReferenceNumber result(format.bits);
    mpfr_set_d(x.Get(), arguments.x, MPFR_RNDN);
    mpfr_set_d(y.Get(), arguments.y, MPFR_RNDN);
    const int side = ApplyReference(function, result.Get(), x.Get(), y.Get());
    mpfr_subnormalize(result.Get(), side, MPFR_RNDN);
    if (mpfr_nan_p(result.Get()) != 0) return std::numeric_limits<double>::quiet_NaN();
    return mpfr_get_d(result.Get(), MPFR_RNDN);
}

int DistanceBits(Elementary function, const Arguments& arguments) {
    constexpr mpfr_prec_t kBits = 400;
    mpfr_set_emin(mpfr_get_emin_min());
    mpfr_set_emax(mpfr_get_emax_max());
    ReferenceNumber x(kBits);
    ReferenceNumber y(kBits);
    ReferenceNumber result(kBits);
    mpfr_set_d(x.Get(), arguments.x, MPFR_RNDN);
    mpfr_set_d(y.Get(), arguments.y, MPFR_RNDN);
    ApplyReference(function, result.Get(), x.Get(), y.Get());
    // In last places, and of those what is behind the point.
    mpfr_mul_2si(result.Get(), result.Get(), FormatOf(function).bits - mpfr_get_exp(result.Get()), MPFR_RNDN);
    mpfr_frac(result.Get(), result.Get(), MPFR_RNDN);
    mpfr_abs(result.Get(), result.Get(), MPFR_RNDN);
    mpfr_sub_d(result.Get(), result.Get(), 0.5, MPFR_RNDN);
    // From 1/2 to 1 times 2^exponent.
    return mpfr_zero_p(result.Get()) != 0 ? std::numeric_limits<int>::max()
                                          : static_cast<int>(-mpfr_get_exp(result.Get()));
}

}  // namespace vastrelline
