// SPDX-License-Identifier: Apache-2.0
#include "profile_text/DoubleText.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>

#include "profile_text/WholeNumber.h"

namespace vastrelline {

namespace {

constexpr int32_t kMantissaBits = 53;
constexpr int32_t kLowestExponent = -1022;  // of the smallest normal number
constexpr int32_t kHighestExponent = 1023;

uint32_t DigitOf(char character) {
    if (character >= '0' && character <= '9') return static_cast<uint32_t>(character - '0');
    if (character >= 'a' && character <= 'f') return static_cast<uint32_t>(character - 'a' + 10);
    if (character >= 'A' && character <= 'F') return static_cast<uint32_t>(character - 'A' + 10);
    return std::numeric_limits<uint32_t>::max();
}

bool IsDecimal(char character) { return DigitOf(character) < 10; }

// Whether the text begins with a word of small letters, in either case.
bool BeginsWith(std::string_view text, std::string_view word) {
    return text.size() >= word.size() &&
           std::equal(word.begin(), word.end(), text.begin(), [](char letter, char character) {
               return character == letter || character == letter - 'a' + 'A';
           });
}

// The bracket with letters, digits and lines behind "nan"; 0 where it is none.
size_t BracketLength(std::string_view text) {
    if (text.empty() || text.front() != '(') return 0;
    for (size_t i = 1; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ')') return i + 1;
        if (!(IsDecimal(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_')) return 0;
    }
    return 0;
}

// Whether "0x" starts a hexadecimal number: a digit has to follow, maybe behind the point.
bool StartsHexNumber(std::string_view text) {
    if (text.size() < 3 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X')) return false;
    const size_t first = text[2] == '.' ? 3 : 2;
    return first < text.size() && DigitOf(text[first]) < 16;
}

// digits * base^exponent, the digits without a point.
struct Mantissa {
    WholeNumber digits;
    int64_t digitCount = 0;  // from the first one that is not 0
    int64_t exponent = 0;
    size_t length = 0;  // in the text; 0 without a digit
};

// Halfway between two doubles lies no number of more decimal digits than 768: of those behind, it counts only
// whether all are 0, which one digit more says as well.
constexpr int64_t kMostDigits = 770;

Mantissa ReadMantissa(std::string_view text, uint32_t base) {
    Mantissa mantissa;
    bool isFraction = false;
    bool hasDigit = false;
    bool isCut = false;
    size_t i = 0;
    for (; i < text.size(); ++i) {
        if (text[i] == '.' && !isFraction) {
            isFraction = true;
            continue;
        }
        const uint32_t digit = DigitOf(text[i]);
        if (digit >= base) break;
        hasDigit = true;
        if (isFraction) --mantissa.exponent;
        if (mantissa.digitCount == 0 && digit == 0) continue;
        if (mantissa.digitCount < kMostDigits) {
            mantissa.digits.MultiplyAdd(base, digit);
            ++mantissa.digitCount;
        } else {
            ++mantissa.exponent;
            isCut = isCut || digit != 0;
        }
    }
    if (isCut) {
        mantissa.digits.MultiplyAdd(base, 1);
        ++mantissa.digitCount;
        --mantissa.exponent;
    }
    if (hasDigit) mantissa.length = i;
    return mantissa;
}

struct Exponent {
    int64_t value = 0;
    size_t length = 0;  // in the text; 0 where it is none
};

// What stands behind the digits, from its letter on.
Exponent ReadExponent(std::string_view text, char letter) {
    if (text.empty() || !BeginsWith(text, std::string_view(&letter, 1))) return {};
    size_t i = 1;
    const bool isNegative = i < text.size() && text[i] == '-';
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
    if (i == text.size() || !IsDecimal(text[i])) return {};
    Exponent exponent;
    constexpr int64_t kBeyondAnyLength = 100'000'000'000'000'000;  // of a text, so no digits make up for it
    for (; i < text.size() && IsDecimal(text[i]); ++i)
        exponent.value = std::min(exponent.value * 10 + DigitOf(text[i]), kBeyondAnyLength);
    if (isNegative) exponent.value = -exponent.value;
    exponent.length = i;
    return exponent;
}

// The double nearest to numerator / denominator * 2^exponent, both above 0.
double NearestDouble(WholeNumber numerator, WholeNumber denominator, int32_t exponent) {
    // To a quotient from 1 on and below 2.
    const size_t up = numerator.BitCount();
    const size_t down = denominator.BitCount();
    if (up > down) denominator.MultiplyByPowerOfTwo(up - down);
    if (down > up) numerator.MultiplyByPowerOfTwo(down - up);
    exponent += static_cast<int32_t>(up) - static_cast<int32_t>(down);
    if (numerator < denominator) {
        numerator.MultiplyByPowerOfTwo(1);
        --exponent;
    }
    if (exponent > kHighestExponent) return std::numeric_limits<double>::infinity();
    const bool isNormal = exponent >= kLowestExponent;
    const int32_t places = isNormal ? kMantissaBits : kMantissaBits - (kLowestExponent - exponent);
    if (places < 0) return 0.0;

    uint64_t quotient = 0;
    for (int32_t i = 0; i < places; ++i) {
        quotient *= 2;
        if (!(numerator < denominator)) {
            numerator.Subtract(denominator);
            ++quotient;
        }
        numerator.MultiplyByPowerOfTwo(1);
    }
    // What is left is numerator / (2 * denominator) of a last place.
    const bool isAboveHalf = denominator < numerator;
    const bool isHalf = !isAboveHalf && !(numerator < denominator);
    if (isAboveHalf || (isHalf && quotient % 2 == 1)) ++quotient;
    // The highest bit of a normal number counts into its exponent, as does what was rounded up to one bit
    // more.
    if (isNormal) quotient += static_cast<uint64_t>(exponent - kLowestExponent) << (kMantissaBits - 1);
    return std::bit_cast<double>(quotient);
}

double NearestToDecimal(const Mantissa& mantissa, int64_t exponent) {
    // From 10^(top - 1) on and below 10^top.
    const int64_t top = mantissa.digitCount + exponent;
    if (mantissa.digitCount == 0 || top < -330) return 0.0;
    if (top > 330) return std::numeric_limits<double>::infinity();
    WholeNumber numerator = mantissa.digits;
    WholeNumber denominator(1);
    if (exponent >= 0)
        numerator.MultiplyByPowerOfTen(static_cast<size_t>(exponent));
    else
        denominator.MultiplyByPowerOfTen(static_cast<size_t>(-exponent));
    return NearestDouble(numerator, denominator, 0);
}

double NearestToHexadecimal(const Mantissa& mantissa, int64_t exponent) {
    const int64_t top = static_cast<int64_t>(mantissa.digits.BitCount()) + exponent;
    if (mantissa.digitCount == 0 || top < -1100) return 0.0;
    if (top > 1100) return std::numeric_limits<double>::infinity();
    return NearestDouble(mantissa.digits, WholeNumber(1), static_cast<int32_t>(exponent));
}

// The digits of a whole number, the lowest first.
std::string DigitsFromTheLowest(WholeNumber number) {
    constexpr uint32_t kStep = 1'000'000'000;
    std::string digits;
    while (number.BitCount() > 0) {
        uint32_t nine = number.DivideBy(kStep);
        for (int i = 0; i < 9; ++i, nine /= 10) digits.push_back(static_cast<char>('0' + nine % 10));
    }
    digits.erase(digits.find_last_not_of('0') + 1);
    return digits;
}

}  // namespace

ParsedDouble ParseUnsignedDouble(std::string_view text) {
    if (BeginsWith(text, "infinity")) return {std::numeric_limits<double>::infinity(), 8};
    if (BeginsWith(text, "inf")) return {std::numeric_limits<double>::infinity(), 3};
    if (BeginsWith(text, "nan"))
        return {std::numeric_limits<double>::quiet_NaN(), 3 + BracketLength(text.substr(3))};
    if (StartsHexNumber(text)) {
        constexpr int64_t kBitsOfADigit = 4;
        const Mantissa mantissa = ReadMantissa(text.substr(2), 16);
        const size_t length = 2 + mantissa.length;
        const Exponent exponent = ReadExponent(text.substr(length), 'p');
        return {NearestToHexadecimal(mantissa, mantissa.exponent * kBitsOfADigit + exponent.value),
                length + exponent.length};
    }
    const Mantissa mantissa = ReadMantissa(text, 10);
    if (mantissa.length == 0) return {};
    const Exponent exponent = ReadExponent(text.substr(mantissa.length), 'e');
    return {NearestToDecimal(mantissa, mantissa.exponent + exponent.value),
            mantissa.length + exponent.length};
}

std::string FormatUnsignedFixed(double value, int precision) {
    constexpr uint64_t kHiddenBit = uint64_t{1} << (kMantissaBits - 1);
    const auto bits = std::bit_cast<uint64_t>(value);
    const auto stored = static_cast<int32_t>(bits >> (kMantissaBits - 1));
    const uint64_t fraction = bits & (kHiddenBit - 1);
    // number * 2^exponent; a subnormal one has the exponent of the smallest normal one.
    WholeNumber number(stored == 0 ? fraction : fraction + kHiddenBit);
    const int32_t exponent = std::max(stored, 1) - 1 + kLowestExponent - (kMantissaBits - 1);

    constexpr size_t kMostDecimals = 1074;  // of the smallest number; behind them all are 0
    const auto decimals = static_cast<size_t>(precision);
    const size_t computed = exponent < 0 ? std::min(decimals, kMostDecimals) : 0;
    if (exponent < 0) {
        number.MultiplyByPowerOfTen(computed);
        number.DivideByPowerOfTwo(static_cast<size_t>(-exponent));
    } else {
        number.MultiplyByPowerOfTwo(static_cast<size_t>(exponent));
    }
    std::string text = DigitsFromTheLowest(number);
    if (text.size() <= computed) text.append(computed + 1 - text.size(), '0');
    std::reverse(text.begin(), text.end());
    text.append(decimals - computed, '0');
    if (decimals > 0) text.insert(text.size() - decimals, 1, '.');
    return text;
}

}  // namespace vastrelline
