// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "profile_text/DoubleText.h"

namespace vastrelline {

// What the value of a key says, once its text is found: without an operating system and in no locale.

// The longest value that is read; what goes on behind it is cut off. Integers are read before the cut.
inline constexpr size_t kLongestValue = 260;

// The value without the quotes around it: two double ones or two single ones.
std::wstring_view DropQuotes(std::wstring_view value);

// The decimal digits at the start of a text, behind blanks, tabs and a minus sign, modulo 2^32; 0 if there
// are none.
int32_t ParseLeadingInteger(std::wstring_view text);

// The number at the start of a text, as the C library's wide string-to-double conversion reads it in the
// "C" locale, correctly rounded: blanks, sign, decimal or hexadecimal digits, exponent, inf, nan.
// No number gives 0.0; too large gives an infinity; too small gives 0.0, signs kept.
double ParseDouble(std::wstring_view text);

// The same, with the number of characters from the text's start to the number's end; 0 if there is no number.
ParsedDouble ParseDoubleAtStart(std::wstring_view text);

// A number with so many decimals, ties to even of its exact value; "inf", "-inf", "nan", "-nan" for
// what is none.
//
// precision   0 or more
std::wstring FormatFixed(double value, int precision);

}  // namespace vastrelline
