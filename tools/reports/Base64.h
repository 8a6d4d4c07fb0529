// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vastrelline {

// Bytes in the letters of RFC 4648, filled up with '=', in one line: how a page holds a picture.
std::string EncodeBase64(std::span<const uint8_t> bytes);

// Back again. Nothing for a text that EncodeBase64 does not give.
std::optional<std::vector<uint8_t>> DecodeBase64(std::string_view text);

}  // namespace vastrelline
