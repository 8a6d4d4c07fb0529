// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vastrelline {

// A text of the key table for a terminal: links become their words, code quotes go.
std::string PlainWords(std::string_view markdown);

// Paragraphs and lists of a text in lines of at most `width` characters, each behind `prefix` and with a line
// end. A word that is longer has a line of its own. Lines of tables stay as they are.
std::string WrapWords(std::string_view text, std::string_view prefix, size_t width);

// A text from a file as a terminal may show it: what would move the cursor, end the line or turn the
// direction of writing becomes '?'.
std::string ShownText(std::string_view utf8);

// The same in at most so many characters, cut with "...".
std::string ShortText(std::string_view utf8, size_t most);

// How many characters a text of UTF-8 has.
size_t CountCharacters(std::string_view utf8);

// Filled up with blanks behind.
std::string PaddedText(std::string text, size_t width);

}  // namespace vastrelline
