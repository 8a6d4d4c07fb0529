// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace vastrelline {

// A profile's bytes as an editor shows them, in UTF-8: without a byte order mark, every line end as '\n',
// bytes that are no character as U+FFFD.
std::string EditorText(const std::string& bytes);

// The bytes of a profile that somebody has edited in that form. Lines that are as they were keep their bytes;
// new ones are encoded as the file is and end as the line before them does, the first as the file's first
// line, in an empty file with CR LF. EditorText of the result is the text, but for CR, which is taken for a
// line end.
//
// path     for messages
// Errors   InputError: the text begins with a byte order mark
std::string MergeText(const std::string& path, const std::string& bytes, std::string_view text);

}  // namespace vastrelline
