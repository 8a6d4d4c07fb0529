// SPDX-License-Identifier: Apache-2.0
#include "reports/Base64.h"

#include <cstddef>
#include <string_view>

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

}  // namespace vastrelline
