// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace vastrelline {

// Bytes in the letters of RFC 4648, filled up with '=', in one line: how a page holds a picture.
std::string EncodeBase64(std::span<const uint8_t> bytes);

}  // namespace vastrelline
