// SPDX-License-Identifier: Apache-2.0
#include "platform/NameBeside.h"

#include <algorithm>
#include <string_view>

namespace vastrelline {

namespace {

std::string HexDigits(uint64_t hash, size_t count) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (size_t i = 0; i < count; ++i) text += kDigits[(hash >> (60U - 4U * i)) & 15U];
    return text;
}

}  // namespace

std::string NameBeside(uint64_t hash, size_t length) {
    constexpr size_t kDigitCount = 8;
    const std::string digits = HexDigits(hash, kDigitCount);
    std::string wanted = ".vastrelline-" + digits + ".tmp";
    if (wanted.size() <= length) return wanted;
    constexpr size_t kMarks = 3;  // before and behind the digits
    constexpr size_t kLeastDigits = 2;
    const size_t roomForDigits = std::max(length, kMarks + kLeastDigits) - kMarks;
    return ".v" + digits.substr(0, roomForDigits) + "~";
}

}  // namespace vastrelline
