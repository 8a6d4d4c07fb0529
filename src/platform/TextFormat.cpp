// SPDX-License-Identifier: Apache-2.0
#include "platform/TextFormat.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>
#include <cmath>
#include <iterator>
#include <optional>

#include "profile_text/ValueText.h"

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

}  // namespace vastrelline
