// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>

namespace vastrelline {

bool IsPortableExecutable(std::span<const uint8_t> file);

// The strings of the first version resource of a Windows program or library, by their names, in UTF-8.
// Nothing where there is none, or the file is cut or bent.
std::optional<std::map<std::string, std::string>> FindVersionStrings(std::span<const uint8_t> file);

}  // namespace vastrelline
