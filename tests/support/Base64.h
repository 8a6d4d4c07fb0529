// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// The bytes that a text in base 64 stands for, as recorded cases have them.
inline std::string DecodeBase64(const std::string& text) {
    const std::string digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    uint32_t bits = 0;
    int bitCount = 0;
    for (const char character : text) {
        if (character == '=') break;
        bits = bits << 6U | static_cast<uint32_t>(digits.find(character));
        bitCount += 6;
        if (bitCount < 8) continue;
        bitCount -= 8;
        bytes.push_back(static_cast<char>(bits >> static_cast<unsigned>(bitCount) & 0xFFU));
    }
    return bytes;
}

}  // namespace vastrelline
