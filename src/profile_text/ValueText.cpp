// SPDX-License-Identifier: Apache-2.0
#include "profile_text/ValueText.h"

#include <cmath>
#include <string_view>

#include "profile_text/DoubleText.h"

namespace vastrelline {

namespace {

bool IsBlank(wchar_t character) { return character == L' ' || (character >= L'\t' && character <= L'\r'); }

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
    std::string number;  // everything a number can be written with is ASCII
    for (const wchar_t character : text.substr(start)) {
        if (character <= L'\0' || character > L'~') break;
        number.push_back(static_cast<char>(character));
    }
    const ParsedDouble parsed = ParseUnsignedDouble(number);
    if (parsed.length == 0) return {};  // a lone sign is no number either
    return {isNegative ? -parsed.value : parsed.value, start + parsed.length};
}

double ParseDouble(std::wstring_view text) { return ParseDoubleAtStart(text).value; }

std::wstring FormatFixed(double value, int precision) {
    const std::wstring sign = std::signbit(value) ? L"-" : L"";
    if (std::isnan(value)) return sign + L"nan";
    if (std::isinf(value)) return sign + L"inf";
    const std::string digits = FormatUnsignedFixed(std::fabs(value), precision);
    return sign + std::wstring(digits.begin(), digits.end());
}

}  // namespace vastrelline
