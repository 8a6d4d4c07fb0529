// SPDX-License-Identifier: Apache-2.0

// Numbers in text both ways, beside those of the C library. The input's head is the text that is read, its
// tail picks what is written.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <string>

#include "platform/TextFormat.h"
#include "profile_text/ValueText.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

// Bytes that numbers are written with, so that most texts hold one; the others as they are.
std::wstring TakeText(const InputTail& tail) {
    constexpr size_t kLongestText = 400;
    constexpr char kUsual[] = "0123456789.eE+-xXpPnaNifINFty \t(";
    std::wstring text;
    for (size_t i = 0; i < std::min(tail.Size(), kLongestText); ++i) {
        const uint8_t byte = tail.Data()[i];
        text += byte < 200 ? static_cast<wchar_t>(kUsual[byte % (sizeof kUsual - 1)])
                           : static_cast<wchar_t>(byte - 190);
    }
    return text;
}

void TestParse(const std::wstring& text) {
    const double number = ParseDouble(text);
    const double expected = std::wcstod(text.c_str(), nullptr);
    const bool isSame = std::isnan(expected)
                            ? std::isnan(number)
                            : std::bit_cast<uint64_t>(number) == std::bit_cast<uint64_t>(expected);
    Require(isSame, "a number is read as the C library reads it");
}

std::wstring Print(const char* format, int width, int precision, double value) {
    char text[2000] = {};
    const int length = std::snprintf(text, sizeof text, format, width, precision, value);
    return {text, text + length};
}

// The format as printf takes width and precision from its arguments, and as the library has them in the text.
void TestFormat(int width, int precision, double value, int32_t number, const std::wstring& text) {
    const std::wstring size = std::to_wstring(width);
    const std::wstring places = std::to_wstring(precision);
    Require(
        FormatText(L"%" + size + L"." + places + L"lf", {value}) == Print("%*.*f", width, precision, value),
        "a fraction is written as the C library writes it");
    Require(
        FormatText(L"%0" + size + L"." + places + L"f", {value}) == Print("%0*.*f", width, precision, value),
        "also after zeros");
    Require(FormatText(L"%f", {value}) == Print("%*.*f", 0, 6, value), "with six places by itself");
    char digits[2000] = {};
    std::snprintf(digits, sizeof digits, "<%0*d>", width, number);
    const std::string expected = digits;
    Require(FormatText(L"<%0" + size + L"d>", {number}) == std::wstring(expected.begin(), expected.end()),
            "a whole number, too");
    const std::wstring padded = FormatText(L"%%%" + size + L"s|%i", {text, number});
    const size_t missing =
        static_cast<size_t>(width) > text.size() ? static_cast<size_t>(width) - text.size() : 0;
    Require(padded == L"%" + std::wstring(missing, L' ') + text + L"|" + std::to_wstring(number),
            "a text stands at the right of its width");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const int width = tail.Take<uint8_t>() % 40;
    const int precision = tail.Take<uint8_t>() % 40;
    const double any = tail.Take<double>();
    const double usual = tail.Take<int32_t>() / 1000.0;
    const double value = tail.Take<uint8_t>() % 2 == 0 ? usual : any;
    const int32_t number = tail.Take<int32_t>();
    const std::wstring text = TakeText(tail);
    TestParse(text);
    // The sign of what is not a number is written by some and left out by others.
    TestFormat(width, precision, std::isnan(value) ? 0.0 : value, number, text);
    return 0;
}
