// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vastrelline {

// A command line as far as it is typed, read as a POSIX shell reads it: blanks part words, quotes and
// backslashes keep them together. Variables and patterns stay as they stand.
struct ShellLine {
    std::vector<std::string> words;  // without their quotes, but for the last one
    std::string current;             // the word at the end, without quotes; empty behind a blank
    char openQuote = '\0';           // the quote that is not closed yet, ' or "
    // How much of `current` bash leaves alone when it replaces the end of the line by a completion: up to the
    // last of = : and quotes.
    size_t kept = 0;
};

ShellLine ReadShellLine(std::string_view line);

// A text as it has to be typed at the end of such a line.
std::string QuoteForBash(std::string_view text, char openQuote);

}  // namespace vastrelline
