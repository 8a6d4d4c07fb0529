// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vastrelline {

bool IsElf(std::span<const uint8_t> file);

// The text of the first note of `owner` in the note segments of an ELF file of either width and byte order,
// without the zero behind it. Nothing where there is none, or the file is cut or bent.
std::optional<std::string> FindElfNote(std::span<const uint8_t> file, std::string_view owner);

}  // namespace vastrelline
