// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>

namespace vastrelline {

bool IsPortableExecutable(std::span<const uint8_t> file);

// The strings of the first version resource of a Windows program or library, in its first language, by their
// names, in UTF-8; of a name that stands twice, the first. Nothing where there is none, or the file is cut or
// bent. Lengths in a version resource have 16 bits, so that all strings together take 64 KiB at most, as a
// thousand short ones do: a longer resource has no whole strings, or those before the first that is not
// whole.
std::optional<std::map<std::string, std::string>> FindVersionStrings(std::span<const uint8_t> file);

}  // namespace vastrelline
