// SPDX-License-Identifier: Apache-2.0
#include "profile_text/Utf8.h"

#include <cstdint>

namespace vastrelline {

namespace {

constexpr char32_t kLastCharacter = 0x10FFFF;
constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char32_t kFirstSurrogate = 0xD800;
constexpr char32_t kFirstLowSurrogate = 0xDC00;
constexpr char32_t kLastSurrogate = 0xDFFF;
// A byte from 80 to FF escapes to this plus the byte: the upper half of 256 low surrogates.
constexpr char32_t kByteEscape = 0xDC00;
constexpr char32_t kFirstByteEscape = kByteEscape + 0x80;
constexpr char32_t kLastByteEscape = kByteEscape + 0xFF;

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;

struct DecodedCharacter {
    char32_t value;
    size_t byteCount;  // 0: no valid UTF-8 starts here
};

DecodedCharacter DecodeFirst(std::string_view bytes) {
    const auto lead = static_cast<uint8_t>(bytes.front());
    if (lead < 0x80) return {lead, 1};
    size_t byteCount = 0;
    char32_t smallest = 0;  // of this length; a smaller value would be overlong
    if ((lead & 0xE0U) == 0xC0U) {
        byteCount = 2;
        smallest = 0x80;
    } else if ((lead & 0xF0U) == 0xE0U) {
        byteCount = 3;
        smallest = 0x800;
    } else if ((lead & 0xF8U) == 0xF0U) {
        byteCount = 4;
        smallest = kFirstSupplementary;
    }
    if (byteCount == 0 || byteCount > bytes.size()) return {0, 0};
    char32_t value = lead & (0x7FU >> byteCount);
    for (size_t i = 1; i < byteCount; ++i) {
        const auto next = static_cast<uint8_t>(bytes[i]);
        if ((next & 0xC0U) != 0x80U) return {0, 0};
        value = value << 6U | (next & 0x3FU);
    }
    const bool isSurrogate = value >= kFirstSurrogate && value <= kLastSurrogate;
    if (value < smallest || value > kLastCharacter || isSurrogate) return {0, 0};
    return {value, byteCount};
}

void AppendWide(std::wstring& text, char32_t value) {
    if (kWideIsUtf16 && value >= kFirstSupplementary) {
        const char32_t offset = value - kFirstSupplementary;
        text.push_back(static_cast<wchar_t>(kFirstSurrogate + (offset >> 10U)));
        text.push_back(static_cast<wchar_t>(kFirstLowSurrogate + (offset & 0x3FFU)));
    } else {
        text.push_back(static_cast<wchar_t>(value));
    }
}

void AppendUtf8(std::string& bytes, char32_t value) {
    const auto tail = [&](unsigned shift) {
        bytes.push_back(static_cast<char>(0x80U | ((value >> shift) & 0x3FU)));
    };
    if (value < 0x80) {
        bytes.push_back(static_cast<char>(value));
    } else if (value < 0x800) {
        bytes.push_back(static_cast<char>(0xC0U | value >> 6U));
        tail(0);
    } else if (value < kFirstSupplementary) {
        bytes.push_back(static_cast<char>(0xE0U | value >> 12U));
        tail(6);
        tail(0);
    } else {
        bytes.push_back(static_cast<char>(0xF0U | value >> 18U));
        tail(12);
        tail(6);
        tail(0);
    }
}

bool IsHighSurrogate(char32_t value) { return value >= kFirstSurrogate && value < kFirstLowSurrogate; }
bool IsLowSurrogate(char32_t value) { return value >= kFirstLowSurrogate && value <= kLastSurrogate; }

}  // namespace

std::wstring DecodeUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const DecodedCharacter character = DecodeFirst(bytes);
        if (character.byteCount > 0) {
            AppendWide(text, character.value);
            bytes.remove_prefix(character.byteCount);
        } else {
            text.push_back(static_cast<wchar_t>(kByteEscape + static_cast<uint8_t>(bytes.front())));
            bytes.remove_prefix(1);
        }
    }
    return text;
}

std::string EncodeUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        auto value = static_cast<char32_t>(text[i]);
        if (kWideIsUtf16 && IsHighSurrogate(value) && i + 1 < text.size() &&
            IsLowSurrogate(static_cast<char32_t>(text[i + 1]))) {
            ++i;
            value = kFirstSupplementary + ((value - kFirstSurrogate) << 10U) +
                    (static_cast<char32_t>(text[i]) - kFirstLowSurrogate);
        }
        if (value >= kFirstByteEscape && value <= kLastByteEscape)
            bytes.push_back(static_cast<char>(value - kByteEscape));
        else if (value > kLastCharacter || (value >= kFirstSurrogate && value <= kLastSurrogate))
            bytes.push_back('?');
        else
            AppendUtf8(bytes, value);
    }
    return bytes;
}

}  // namespace vastrelline
