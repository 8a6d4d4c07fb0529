// SPDX-License-Identifier: Apache-2.0
#include "formats/PngText.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vastrelline {
namespace {

constexpr std::array<uint8_t, 8> kSignature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr size_t kLengthBytes = 4;
constexpr size_t kNameBytes = 4;
constexpr size_t kSumBytes = 4;

size_t BigEndian(const uint8_t* bytes) {
    return size_t{bytes[0]} << 24 | size_t{bytes[1]} << 16 | size_t{bytes[2]} << 8 | size_t{bytes[3]};
}

}  // namespace

std::optional<std::string> FindPngText(const std::vector<uint8_t>& bytes, std::string_view keyword) {
    if (bytes.size() < kSignature.size() || !std::equal(kSignature.begin(), kSignature.end(), bytes.begin()))
        return std::nullopt;
    constexpr size_t kFrame = kLengthBytes + kNameBytes + kSumBytes;
    for (size_t at = kSignature.size(); bytes.size() - at >= kFrame;) {
        const size_t length = BigEndian(bytes.data() + at);
        if (bytes.size() - at - kFrame < length) return std::nullopt;
        const auto* const name = reinterpret_cast<const char*>(bytes.data() + at + kLengthBytes);
        const std::string_view data(name + kNameBytes, length);
        const bool isIt = std::string_view(name, kNameBytes) == "tEXt" && length > keyword.size() &&
                          data.starts_with(keyword) && data[keyword.size()] == '\0';
        if (isIt) return std::string(data.substr(keyword.size() + 1));
        at += kFrame + length;
    }
    return std::nullopt;
}

}  // namespace vastrelline
