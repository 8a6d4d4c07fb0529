// SPDX-License-Identifier: Apache-2.0
#include "profile/ValueReading.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

#include "profile_text/Utf8.h"
#include "profile_text/ValueText.h"

namespace vastrelline {

namespace {

bool IsDigit(wchar_t character) { return character >= L'0' && character <= L'9'; }

std::wstring_view SkipBlanks(std::wstring_view text) {
    const size_t first = text.find_first_not_of(L" \t\n\v\f\r");
    return first == std::wstring_view::npos ? std::wstring_view() : text.substr(first);
}

// Whether nothing but zeros follow a decimal point.
bool IsEmptyFraction(std::wstring_view behindThePoint) {
    const size_t first = behindThePoint.find_first_not_of(L'0');
    return first == std::wstring_view::npos || SkipBlanks(behindThePoint.substr(first)).empty();
}

// What is wrong with the text behind a number that was read.
ReadingSlip JudgeRest(std::wstring_view rest) {
    if (SkipBlanks(rest).empty()) return ReadingSlip::None;
    const bool isComma = rest.size() > 1 && rest[0] == L',' && IsDigit(rest[1]);
    return isComma ? ReadingSlip::DecimalComma : ReadingSlip::TextBehind;
}

ReadingSlip JudgeNothing(std::wstring_view text) {
    return SkipBlanks(text).empty() ? ReadingSlip::NoValue : ReadingSlip::NoNumber;
}

// Whether digits say a number that 32 bits with a sign hold.
bool FitsInteger(std::wstring_view digits, bool isNegative) {
    int64_t value = 0;
    for (const wchar_t digit : digits) {
        value = value * 10 + (digit - L'0');
        if (value > int64_t{std::numeric_limits<int32_t>::max()} + (isNegative ? 1 : 0)) return false;
    }
    return true;
}

ReadingSlip JudgeInteger(std::wstring_view text) {
    size_t i = text.find_first_not_of(L" \t");
    if (i == std::wstring_view::npos) return ReadingSlip::NoValue;
    const bool isNegative = text[i] == L'-';
    if (isNegative) ++i;
    const std::wstring_view behindSign = text.substr(i);
    size_t count = 0;
    while (count < behindSign.size() && IsDigit(behindSign[count])) ++count;
    if (count == 0) return JudgeNothing(text);
    if (!FitsInteger(behindSign.substr(0, count), isNegative)) return ReadingSlip::Wrapped;
    const std::wstring_view rest = behindSign.substr(count);
    if (!rest.starts_with(L'.')) return JudgeRest(rest);
    if (IsEmptyFraction(rest.substr(1))) return ReadingSlip::None;
    return rest.size() > 1 && IsDigit(rest[1]) ? ReadingSlip::Fraction : ReadingSlip::TextBehind;
}

// Whether a number that was read as 0 says something else: a digit that is not 0.
bool SaysMoreThanZero(std::wstring_view number) {
    const bool isHex = number.find_first_of(L"xX") != std::wstring_view::npos;
    const std::wstring_view mantissa = number.substr(0, number.find_first_of(isHex ? L"pP" : L"eE"));
    return mantissa.find_first_of(L"123456789abcdefABCDEF") != std::wstring_view::npos;
}

ReadingSlip JudgeNumber(std::wstring_view text, const ParsedDouble& parsed, bool isZero, bool isFinite) {
    if (parsed.length == 0) return JudgeNothing(text);
    if (!isFinite) return ReadingSlip::NotFinite;
    if (isZero && SaysMoreThanZero(text.substr(0, parsed.length))) return ReadingSlip::TooSmall;
    return JudgeRest(text.substr(parsed.length));
}

// As the library turns a number into an integer: what has none gives the smallest.
int32_t CutFraction(double value) {
    if (value > -2147483649.0 && value < 2147483648.0) return static_cast<int32_t>(value);
    return std::numeric_limits<int32_t>::min();
}

ReadValue ConvertNumber(double number, KeyType type) {
    if (type == KeyType::SingleNumber) return static_cast<float>(number);
    if (type == KeyType::CutNumber) return CutFraction(number);
    return number;
}

// Nor does a number without an integer of 32 bits.
ReadingSlip JudgeCutNumber(double number, ReadingSlip slip) {
    if (slip != ReadingSlip::None) return slip == ReadingSlip::NotFinite ? ReadingSlip::Wrapped : slip;
    if (!(number > -2147483649.0 && number < 2147483648.0)) return ReadingSlip::Wrapped;
    return std::trunc(number) == number ? ReadingSlip::None : ReadingSlip::Fraction;
}

ValueReading ReadNumber(std::wstring_view text, KeyType type) {
    const ParsedDouble parsed = ParseDoubleAtStart(text);
    const bool isSingle = type == KeyType::SingleNumber;
    const double held = isSingle ? static_cast<double>(static_cast<float>(parsed.value)) : parsed.value;
    ReadingSlip slip = JudgeNumber(text, parsed, held == 0.0, std::isfinite(held));
    if (type == KeyType::CutNumber) slip = JudgeCutNumber(parsed.value, slip);
    return {ConvertNumber(parsed.value, type), ReadingMark::FromFile, slip};
}

// A number's default goes through text with six decimals.
ReadValue ReadDefault(KeyType type, std::string_view defaultText) {
    constexpr int kDefaultDecimals = 6;
    const std::wstring text = DecodeUtf8(defaultText);
    if (type == KeyType::Text) return text;
    if (type == KeyType::Integer) return ParseLeadingInteger(text);
    return ConvertNumber(ParseDouble(FormatFixed(ParseDouble(text), kDefaultDecimals)), type);
}

template <typename Number>
std::string ShortestText(Number number) {
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return {digits.data(), result.ptr};
}

std::string_view SlipText(ReadingSlip slip) {
    switch (slip) {
        case ReadingSlip::None:
            break;
        case ReadingSlip::NoValue:
            return "nothing stands there";
        case ReadingSlip::NoNumber:
            return "no number";
        case ReadingSlip::DecimalComma:
            return "the decimal sign is a point";
        case ReadingSlip::TextBehind:
            return "text behind the number";
        case ReadingSlip::Fraction:
            return "a whole number is read";
        case ReadingSlip::Wrapped:
            return "too large for 32 bits";
        case ReadingSlip::NotFinite:
            return "not a finite number";
        case ReadingSlip::TooSmall:
            return "too small";
        case ReadingSlip::TooLong:
            return "cut after 260 characters";
    }
    return {};
}

}  // namespace

std::string_view MarkName(ReadingMark mark) {
    switch (mark) {
        case ReadingMark::FromFile:
            return "from-file";
        case ReadingMark::Default:
            return "default";
        case ReadingMark::Cut:
            return "cut";
        case ReadingMark::Misread:
            return "misread";
    }
    return {};
}

ValueReading ReadWritten(const std::optional<std::wstring>& written, KeyType type,
                         std::string_view defaultText) {
    if (!written) return {ReadDefault(type, defaultText), ReadingMark::Default, ReadingSlip::None};
    const std::wstring_view whole = DropQuotes(*written);
    if (type == KeyType::Integer) {
        const ReadingSlip slip = JudgeInteger(whole);
        const ReadingMark mark = slip == ReadingSlip::None ? ReadingMark::FromFile : ReadingMark::Misread;
        return {ParseLeadingInteger(whole), mark, slip};
    }
    const bool isTooLong = whole.size() > kLongestValue;
    const std::wstring_view text = whole.substr(0, kLongestValue);
    ValueReading reading = type == KeyType::Text
                               ? ValueReading{std::wstring(text), ReadingMark::FromFile, ReadingSlip::None}
                               : ReadNumber(text, type);
    if (isTooLong) {
        reading.mark = ReadingMark::Cut;
        reading.slip = ReadingSlip::TooLong;
    } else if (reading.slip != ReadingSlip::None) {
        reading.mark = ReadingMark::Misread;
    }
    return reading;
}

std::string DescribeSlip(const ValueReading& reading) {
    if (reading.slip == ReadingSlip::None) return {};
    std::string text(SlipText(reading.slip));
    if (reading.mark == ReadingMark::Misread) text += ": read as " + FormatReadValue(reading.value);
    return text;
}

std::string FormatReadValue(const ReadValue& value) {
    return std::visit(
        [](const auto& held) {
            if constexpr (std::is_same_v<std::decay_t<decltype(held)>, std::wstring>)
                return EncodeUtf8(held);
            else
                return ShortestText(held);
        },
        value);
}

}  // namespace vastrelline
