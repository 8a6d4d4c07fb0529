// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vastrelline {

// A text within a PNG file, in a block of its own beside the picture.
struct PngText {
    std::string keyword;  // 1 to 79 printable characters
    std::string text;     // printable ASCII
};

// The first text of this keyword; nothing if there is none or the file is no PNG. Packed texts and those of
// other alphabets than Latin are passed over. Damage behind it goes unseen: what reads the picture finds it.
std::optional<std::string> FindPngText(const std::vector<uint8_t>& bytes, std::string_view keyword);

}  // namespace vastrelline
