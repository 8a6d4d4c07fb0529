#include "profile_text/ValueText.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

namespace vastrelline {

namespace {

bool IsBlank(wchar_t character) { return character == L' ' || (character >= L'\t' && character <= L'\r'); }

bool IsHexDigit(char character) {
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f') ||
           (character >= 'A' && character <= 'F');
}

// Whether "0x" starts a hexadecimal number: a digit has to follow, maybe behind the point.
bool StartsHexNumber(const std::string& text) {
    if (text.size() < 3 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X')) return false;
    return IsHexDigit(text[2]) || (text[2] == '.' && text.size() > 3 && IsHexDigit(text[3]));
}

// Whether a number that no double can hold is too large; otherwise it is too small. Out of range is
// hundreds of places away from 1, so the place of the first digit that is not 0, plus the exponent, tells.
bool IsTooLarge(std::string_view number, bool isHex) {
    const int64_t weight = isHex ? 4 : 1;  // one hexadecimal place is four steps of the exponent of 2
    int64_t place = 0;
    bool isFraction = false;
    bool isFound = false;
    size_t i = 0;
    for (; i < number.size(); ++i) {
        if (number[i] == '.') {
            isFraction = true;
        } else if (isHex ? IsHexDigit(number[i]) : (number[i] >= '0' && number[i] <= '9')) {
            isFound = isFound || number[i] != '0';
            if (isFraction && !isFound) place -= weight;
            if (!isFraction && isFound) place += weight;
        } else {
            break;
        }
    }
    int64_t exponent = 0;
    if (i + 1 < number.size()) {
        const bool isNegative = number[i + 1] == '-';
        const bool isSigned = isNegative || number[i + 1] == '+';
        const char* const digits = number.data() + i + (isSigned ? 2 : 1);
        constexpr int64_t kBeyondAnyLength = std::numeric_limits<int64_t>::max() / 4;
        if (std::from_chars(digits, number.data() + number.size(), exponent).ec != std::errc())
            exponent = kBeyondAnyLength;
        exponent = std::min(exponent, kBeyondAnyLength);
        if (isNegative) exponent = -exponent;
    }
    return place + exponent > 0;
}

// The standard library takes two signs of a hexadecimal number's exponent, where the C library ends the
// number before it.
void CutBeforeSecondSign(std::string& text) {
    const size_t exponent = text.find_first_of("pP");
    if (exponent == std::string::npos || text.size() - exponent < 3) return;
    const auto isSign = [&](size_t place) { return text[place] == '+' || text[place] == '-'; };
    if (isSign(exponent + 1) && isSign(exponent + 2)) text.resize(exponent);
}

ParsedDouble ParseUnsignedDouble(std::string text) {
    const bool isHex = StartsHexNumber(text);
    if (isHex) {
        text.erase(0, 2);
        CutBeforeSecondSign(text);
    }
    double value = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value,
                                        isHex ? std::chars_format::hex : std::chars_format::general);
    const auto digitsLength = static_cast<size_t>(result.ptr - text.data());
    const size_t length = digitsLength + (isHex ? 2 : 0);
    if (result.ec == std::errc()) return {value, length};
    if (result.ec != std::errc::result_out_of_range) return {};
    const bool isTooLarge = IsTooLarge(std::string_view(text).substr(0, digitsLength), isHex);
    return {isTooLarge ? std::numeric_limits<double>::infinity() : 0.0, length};
}

}  // namespace

std::wstring_view DropQuotes(std::wstring_view value) {
    const bool isQuoted = value.size() >= 2 && value.front() == value.back() &&
                          (value.front() == L'"' || value.front() == L'\'');
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

int32_t ParseLeadingInteger(std::wstring_view text) {
    size_t i = 0;
    while (i < text.size() && (text[i] == L' ' || text[i] == L'\t')) ++i;
    const bool isNegative = i < text.size() && text[i] == L'-';
    if (isNegative) ++i;
    uint32_t value = 0;  // unsigned: too many digits wrap
    for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i)
        value = value * 10 + static_cast<uint32_t>(text[i] - L'0');
    return static_cast<int32_t>(isNegative ? 0 - value : value);
}

ParsedDouble ParseDoubleAtStart(std::wstring_view text) {
    size_t start = 0;
    while (start < text.size() && IsBlank(text[start])) ++start;
    bool isNegative = false;
    if (start < text.size() && (text[start] == L'+' || text[start] == L'-'))
        isNegative = text[start++] == L'-';
    // A second sign would pass below.
    if (start < text.size() && (text[start] == L'+' || text[start] == L'-')) return {};
    std::string number;  // everything a number can be written with is ASCII
    for (const wchar_t character : text.substr(start)) {
        if (character <= L'\0' || character > L'~') break;
        number.push_back(static_cast<char>(character));
    }
    const ParsedDouble parsed = ParseUnsignedDouble(std::move(number));
    if (parsed.length == 0) return {};  // a lone sign is no number either
    return {isNegative ? -parsed.value : parsed.value, start + parsed.length};
}

double ParseDouble(std::wstring_view text) { return ParseDoubleAtStart(text).value; }

std::wstring FormatFixed(double value, int precision) {
    constexpr size_t kLongestIntegerPart = 312;  // 309 digits of the largest double, sign and point
    std::string digits(kLongestIntegerPart + static_cast<size_t>(precision), '\0');
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                      std::chars_format::fixed, precision);
    return {digits.data(), result.ptr};
}

}  // namespace vastrelline
