// SPDX-License-Identifier: Apache-2.0
#include "reports/Base64.h"

#include <cstddef>

namespace vastrelline {
namespace {

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr size_t kBytes = 3;    // that make
constexpr size_t kGroup = 4;    // letters
constexpr uint32_t kLow6 = 63;  // bits of a letter

}  // namespace

std::string EncodeBase64(std::span<const uint8_t> bytes) {
    std::string text;
    text.reserve((bytes.size() + kBytes - 1) / kBytes * kGroup);
    for (size_t at = 0; at < bytes.size(); at += kBytes) {
        const size_t left = bytes.size() - at;
        const uint32_t bits = uint32_t{bytes[at]} << 16 | (left > 1 ? uint32_t{bytes[at + 1]} << 8 : 0U) |
                              (left > 2 ? uint32_t{bytes[at + 2]} : 0U);
        text += kLetters[bits >> 18];
        text += kLetters[bits >> 12 & kLow6];
        text += left > 1 ? kLetters[bits >> 6 & kLow6] : '=';
        text += left > 2 ? kLetters[bits & kLow6] : '=';
    }
    return text;
}

std::optional<std::vector<uint8_t>> DecodeBase64(std::string_view text) {
    if (text.size() % kGroup != 0) return std::nullopt;
    std::vector<uint8_t> bytes;
    bytes.reserve(text.size() / kGroup * kBytes);
    for (size_t at = 0; at < text.size(); at += kGroup) {
        const std::string_view group = text.substr(at, kGroup);
        const bool isLast = at + kGroup == text.size();
        const size_t letters = isLast ? group.find_last_not_of('=') + 1 : kGroup;
        if (letters < 2) return std::nullopt;
        uint32_t bits = 0;
        for (size_t i = 0; i < kGroup; ++i) {
            const size_t value = i < letters ? kLetters.find(group[i]) : 0;
            if (value == std::string_view::npos) return std::nullopt;
            bits = bits << 6 | static_cast<uint32_t>(value);
        }
        // Of what a cut group has beyond its bytes there must be nothing.
        const size_t count = letters - 1;
        if ((bits & ((uint32_t{1} << 8 * (kBytes - count)) - 1)) != 0) return std::nullopt;
        for (size_t i = 0; i < count; ++i) bytes.push_back(static_cast<uint8_t>(bits >> (16 - 8 * i)));
    }
    return bytes;
}

}  // namespace vastrelline
