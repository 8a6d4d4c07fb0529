// SPDX-License-Identifier: Apache-2.0
#include "sweep/DecimalNumber.h"

#include <algorithm>
#include <cstdlib>

namespace vastrelline {
namespace {

constexpr int64_t kTen = 10;

// The same number with more places; nothing if that takes too many digits.
std::optional<int64_t> WithPlaces(DecimalNumber number, int places) {
    constexpr int64_t kMost = 1'000'000'000'000'000;  // 15 digits: sums of two are far from the type's end
    int64_t digits = number.digits;
    for (; number.places < places; ++number.places) {
        digits *= kTen;
        if (std::abs(digits) >= kMost) return std::nullopt;
    }
    return digits;
}

}  // namespace

std::optional<DecimalNumber> ParseDecimal(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) text.remove_prefix(1);
    DecimalNumber number;
    int count = 0;
    bool isBehindPoint = false;
    for (const char c : text) {
        if (c == '.' && !isBehindPoint) {
            isBehindPoint = true;
            continue;
        }
        if (c < '0' || c > '9' || ++count > kMostDecimalDigits) return std::nullopt;
        number.digits = number.digits * kTen + (c - '0');
        number.places += isBehindPoint ? 1 : 0;
    }
    if (count == 0) return std::nullopt;
    if (isNegative) number.digits = -number.digits;
    return number;
}

std::string FormatDecimal(DecimalNumber number) {
    while (number.places > 0 && number.digits % kTen == 0) {
        number.digits /= kTen;
        --number.places;
    }
    std::string text = std::to_string(std::abs(number.digits));
    const auto places = static_cast<size_t>(number.places);
    if (text.size() <= places) text.insert(0, places + 1 - text.size(), '0');
    if (places > 0) text.insert(text.size() - places, 1, '.');
    return number.digits < 0 ? "-" + text : text;
}

DecimalNumber DecimalSteps::At(uint64_t index) const {
    return {first.digits + static_cast<int64_t>(index) * step.digits, first.places};
}

std::optional<DecimalSteps> MakeDecimalSteps(DecimalNumber first, DecimalNumber last, DecimalNumber step) {
    const int places = std::max({first.places, last.places, step.places});
    const std::optional<int64_t> from = WithPlaces(first, places);
    const std::optional<int64_t> to = WithPlaces(last, places);
    const std::optional<int64_t> wide = WithPlaces(step, places);
    if (!from || !to || !wide || *wide == 0) return std::nullopt;
    const int64_t way = *to - *from;
    if (*wide < 0 && way > 0) return std::nullopt;
    const int64_t signedStep = way < 0 ? -std::abs(*wide) : *wide;
    // Both have the same sign, so that the division rounds towards the first one.
    const auto count = static_cast<uint64_t>(way / signedStep) + 1;
    return DecimalSteps{{*from, places}, {signedStep, places}, count};
}

}  // namespace vastrelline
