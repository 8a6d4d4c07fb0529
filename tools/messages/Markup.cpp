// SPDX-License-Identifier: Apache-2.0
#include "messages/Markup.h"

#include <cstddef>
#include <cstdint>

namespace vastrelline {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD
constexpr unsigned char kDelete = 0x7F;

struct Sequence {
    size_t length;   // bytes; 0: the lead byte begins none
    uint32_t bits;   // of the lead byte that count
    uint32_t least;  // a smaller number has a shorter form, which alone is right
};

Sequence SequenceOf(unsigned char lead) {
    constexpr uint32_t kLeast2 = 0x80;
    constexpr uint32_t kLeast3 = 0x800;
    constexpr uint32_t kLeast4 = 0x10000;
    if ((lead & 0xE0U) == 0xC0U) return {2, lead & 0x1FU, kLeast2};
    if ((lead & 0xF0U) == 0xE0U) return {3, lead & 0x0FU, kLeast3};
    if ((lead & 0xF8U) == 0xF0U) return {4, lead & 0x07U, kLeast4};
    return {0, 0, 0};
}

// Beyond ASCII: the surrogates are no characters, and XML forbids the last two of the first plane. The
// controls of the second half of Latin-1 are told by nothing.
bool IsAllowed(uint32_t number) {
    constexpr uint32_t kLastControl = 0x9F;
    constexpr uint32_t kLast = 0x10FFFF;
    const bool isSurrogate = number >= 0xD800 && number <= 0xDFFF;
    const bool isNoCharacter = number == 0xFFFE || number == 0xFFFF;
    return number > kLastControl && number <= kLast && !isSurrogate && !isNoCharacter;
}

// The length of the character of several bytes that begins here; 0 if none does.
size_t LengthAt(std::string_view text, size_t at) {
    const Sequence sequence = SequenceOf(static_cast<unsigned char>(text[at]));
    if (sequence.length == 0 || at + sequence.length > text.size()) return 0;
    uint32_t number = sequence.bits;
    for (size_t i = 1; i < sequence.length; ++i) {
        const auto byte = static_cast<unsigned char>(text[at + i]);
        if ((byte & 0xC0U) != 0x80U) return 0;
        number = number << 6 | (byte & 0x3FU);
    }
    return number >= sequence.least && IsAllowed(number) ? sequence.length : 0;
}

std::string AsciiMarkup(unsigned char c) {
    switch (c) {
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '&':
            return "&amp;";
        case '"':
            return "&quot;";
        case '\'':
            return "&#39;";
        default:
            break;
    }
    if (c == kDelete) return "\xE2\x90\xA1";  // U+2421
    if (c < ' ') return {'\xE2', '\x90', static_cast<char>(0x80 + c)};
    return std::string(1, static_cast<char>(c));
}

}  // namespace

std::string EscapeMarkup(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (size_t at = 0; at < text.size();) {
        const auto c = static_cast<unsigned char>(text[at]);
        const size_t length = c < 0x80 ? 1 : LengthAt(text, at);
        if (c < 0x80)
            escaped += AsciiMarkup(c);
        else
            escaped += length > 0 ? text.substr(at, length) : kReplacement;
        at += length > 0 ? length : 1;
    }
    return escaped;
}

}  // namespace vastrelline
