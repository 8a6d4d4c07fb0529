// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <mpfr.h>

#include "EachFunction.h"

namespace vastrelline {

class ReferenceNumber {
public:
    explicit ReferenceNumber(mpfr_prec_t bits) { mpfr_init2(value_, bits); }
    ~ReferenceNumber() { mpfr_clear(value_); }
    ReferenceNumber(const ReferenceNumber&) = delete;
    ReferenceNumber& operator=(const ReferenceNumber&) = delete;

    mpfr_ptr Get() { return value_; }

private:
    mpfr_t value_;
};

// The result to as many bits as it has. Returns on which side of the exact value it lies.
int ApplyReference(Elementary function, mpfr_ptr result, mpfr_srcptr x, mpfr_srcptr y);

// The nearest result, ties to even and subnormal ones rounded once, by a library of numbers of any precision.
// What is no number has the bits of the positive quiet one.
double ReferenceResult(Elementary function, const Arguments& arguments);

// How many times the distance of the result from halfway between two neighbours can be doubled before it
// passes a last place of a double or float. For results that are normal numbers and lie nowhere exactly.
int DistanceBits(Elementary function, const Arguments& arguments);

}  // namespace vastrelline
