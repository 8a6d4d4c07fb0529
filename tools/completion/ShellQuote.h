// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace vastrelline {

// A word as a POSIX shell reads it back: as it is where no letter means anything to a shell, else in single
// quotes.
std::string QuoteForShell(std::string_view word);

}  // namespace vastrelline
