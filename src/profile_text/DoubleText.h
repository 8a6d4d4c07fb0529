// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vastrelline {

// Doubles from text and as text, by whole numbers only: the compiler's library, the locale, the processor's
// way of rounding and its extra digits have no say, so that a key means the same number on every machine.

// A number, and how many characters of the text it takes; 0 characters if there is none.
struct ParsedDouble {
    double value = 0.0;
    size_t length = 0;
};

// The number without a sign at the start of a text, as the C library reads it in the "C" locale: decimal
// digits with a point and an exponent of ten, hexadecimal ones behind "0x" with an exponent of two, "inf",
// "infinity", "nan", "nan(...)", in either case. The nearest double, ties to even; too large gives an
// infinity, too small 0.
ParsedDouble ParseUnsignedDouble(std::string_view text);

// All digits of a number of 0 or more, up to so many decimals, rounded to the nearest, ties to even.
//
// value      finite, 0 or more
// precision  0 or more; without decimals there is no point
std::string FormatUnsignedFixed(double value, int precision);

}  // namespace vastrelline
