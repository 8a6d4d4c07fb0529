#include "platform/TextFormat.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <system_error>
#include <utility>

namespace vastrelline {

namespace {

struct Conversion {
    bool isZeroPadded = false;
    size_t width = 0;
    std::optional<int> precision;
    wchar_t type = L'\0';
};

// Widths and precisions beyond this are a slip in a format, not a wish.
constexpr int kLargestFormatNumber = 1000;

std::wstring_view::const_iterator ReadFormatNumber(std::wstring_view::const_iterator position,
                                                   std::wstring_view::const_iterator end, int& number) {
    number = 0;
    for (; position != end && *position >= L'0' && *position <= L'9'; ++position)
        number = std::min(number * 10 + static_cast<int>(*position - L'0'), kLargestFormatNumber);
    return position;
}

// Reads what stands behind a '%' and moves `position` behind it. A type of '\0' is an unfinished format.
Conversion ReadConversion(std::wstring_view::const_iterator& position,
                          std::wstring_view::const_iterator end) {
    Conversion conversion;
    for (; position != end && *position == L'0'; ++position) conversion.isZeroPadded = true;
    int number = 0;
    position = ReadFormatNumber(position, end, number);
    conversion.width = static_cast<size_t>(number);
    if (position != end && *position == L'.') {
        position = ReadFormatNumber(std::next(position), end, number);
        conversion.precision = number;
    }
    while (position != end && *position == L'l') ++position;
    if (position != end) conversion.type = *position++;
    return conversion;
}

std::wstring WidenAscii(const char* begin, const char* end) { return {begin, end}; }

std::wstring FormatInteger(int32_t value) {
    std::array<char, 12> digits{};  // "-2147483648" has 11
    const auto result = std::to_chars(digits.begin(), digits.end(), value);
    return WidenAscii(digits.begin(), result.ptr);
}

std::wstring FormatFixed(double value, int precision) {
    constexpr size_t kLongestIntegerPart = 312;  // 309 digits of the largest double, sign and point
    std::string digits(kLongestIntegerPart + static_cast<size_t>(precision), '\0');
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                      std::chars_format::fixed, precision);
    return WidenAscii(digits.data(), result.ptr);
}

void AppendPadded(std::wstring& text, std::wstring_view field, size_t width, bool isZeroPadded) {
    const size_t missing = width > field.size() ? width - field.size() : 0;
    if (!isZeroPadded) {
        text.append(missing, L' ').append(field);
        return;
    }
    const size_t signLength = !field.empty() && field.front() == L'-' ? 1 : 0;
    text.append(field.substr(0, signLength)).append(missing, L'0').append(field.substr(signLength));
}

// False: the argument is not one for this conversion.
bool AppendArgument(std::wstring& text, const Conversion& conversion, const FormatArgument& argument) {
    constexpr int kUsualPrecision = 6;
    if (conversion.type == L'f') {
        const double* const value = std::get_if<double>(&argument);
        if (value == nullptr) return false;
        AppendPadded(text, FormatFixed(*value, conversion.precision.value_or(kUsualPrecision)),
                     conversion.width, conversion.isZeroPadded && std::isfinite(*value));
        return true;
    }
    if (conversion.precision) return false;
    if (conversion.type == L'd' || conversion.type == L'i') {
        const int32_t* const value = std::get_if<int32_t>(&argument);
        if (value == nullptr) return false;
        AppendPadded(text, FormatInteger(*value), conversion.width, conversion.isZeroPadded);
        return true;
    }
    const std::wstring_view* const value = std::get_if<std::wstring_view>(&argument);
    if (conversion.type != L's' || value == nullptr) return false;
    AppendPadded(text, *value, conversion.width, false);
    return true;
}

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

// Nothing: no number starts the text.
std::optional<double> ParseUnsignedDouble(std::string text) {
    const bool isHex = StartsHexNumber(text);
    if (isHex) {
        text.erase(0, 2);
        CutBeforeSecondSign(text);
    }
    double value = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value,
                                        isHex ? std::chars_format::hex : std::chars_format::general);
    if (result.ec == std::errc()) return value;
    if (result.ec != std::errc::result_out_of_range) return std::nullopt;
    const auto length = static_cast<size_t>(result.ptr - text.data());
    const bool isTooLarge = IsTooLarge(std::string_view(text).substr(0, length), isHex);
    return isTooLarge ? std::numeric_limits<double>::infinity() : 0.0;
}

}  // namespace

std::wstring FormatText(std::wstring_view format, std::initializer_list<FormatArgument> arguments) {
    return FormatText(format, std::span<const FormatArgument>(arguments.begin(), arguments.size()));
}

std::wstring FormatText(std::wstring_view format, std::span<const FormatArgument> arguments) {
    std::wstring text;
    text.reserve(format.size());
    auto argument = arguments.begin();
    for (auto position = format.begin(); position != format.end();) {
        if (*position != L'%') {
            text.push_back(*position++);
            continue;
        }
        ++position;
        const Conversion conversion = ReadConversion(position, format.end());
        if (conversion.type == L'%') {
            text.push_back(L'%');
            continue;
        }
        const bool isWritten = argument != arguments.end() && AppendArgument(text, conversion, *argument++);
        assert(isWritten);
        if (!isWritten) return {};
    }
    return text;
}

double ParseDouble(std::wstring_view text) {
    size_t start = 0;
    while (start < text.size() && IsBlank(text[start])) ++start;
    bool isNegative = false;
    if (start < text.size() && (text[start] == L'+' || text[start] == L'-'))
        isNegative = text[start++] == L'-';
    // A second sign would pass below.
    if (start < text.size() && (text[start] == L'+' || text[start] == L'-')) return 0.0;
    std::string number;  // everything a number can be written with is ASCII
    for (const wchar_t character : text.substr(start)) {
        if (character <= L'\0' || character > L'~') break;
        number.push_back(static_cast<char>(character));
    }
    const std::optional<double> value = ParseUnsignedDouble(std::move(number));
    if (!value) return 0.0;  // a lone sign is no number either
    return isNegative ? -*value : *value;
}

}  // namespace vastrelline
