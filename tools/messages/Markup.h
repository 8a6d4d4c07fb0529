// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace vastrelline {

// A text as it may stand in HTML and XML, in elements and in quoted attributes: whatever it holds, it stays
// text. < > & " ' become references. Control characters, line ends among them, become the signs that Unicode
// has to show them (U+2400 and on), so that a file's name is one line and no name looks like another one.
// Bytes that are no UTF-8, and what XML forbids, become U+FFFD, one a byte.
std::string EscapeMarkup(std::string_view text);

}  // namespace vastrelline
