// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vastrelline {

// The most digits of a decimal number, in front of the point and behind it together.
inline constexpr int kMostDecimalDigits = 15;

// A number as it is written, digit by digit: 0.1 is one tenth, which no binary number is. By it values are
// counted up without an error that grows, and written as a person would. The point is the decimal sign in
// every locale.
struct DecimalNumber {
    int64_t digits = 0;  // with the sign: -15 of -1.5
    int places = 0;      // behind the point: 1 of -1.5

    bool operator==(const DecimalNumber&) const = default;
};

// "12", "-0.5", "+.5", "3."; nothing for any other text, and for one of too many digits.
std::optional<DecimalNumber> ParseDecimal(std::string_view text);

// With as few digits as there are: "0", "-0.5", "120".
std::string FormatDecimal(DecimalNumber number);

// Numbers one step apart: first, first + step, ...
struct DecimalSteps {
    DecimalNumber first;  // first and step have the same places
    DecimalNumber step;
    uint64_t count = 0;

    // The number of a step, from 0; below count.
    DecimalNumber At(uint64_t index) const;
};

// The numbers from the first to the last one. The last one belongs to them only if a step hits it. A step
// without a minus goes down where the last is below the first.
//
// Nothing   step is 0, or its minus leads away from the last, or the numbers differ too much in their digits
std::optional<DecimalSteps> MakeDecimalSteps(DecimalNumber first, DecimalNumber last, DecimalNumber step);

}  // namespace vastrelline
