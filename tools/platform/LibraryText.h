// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

namespace vastrelline {

// A text as the library's functions take it: bytes, on Windows of the thread's code page. Nothing where that
// page lacks a character.
std::optional<std::string> LibraryText(const std::string& text);

// The same of a path; where a character is lacking, by the short names that the system has given the file or
// the folder, if it has.
std::optional<std::string> LibraryPath(const std::string& path);

}  // namespace vastrelline
