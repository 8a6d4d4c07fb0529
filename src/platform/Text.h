// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "profile_text/ProfileEncoding.h"

namespace vastrelline {

// Narrow text of a caller, in the code page of the calling thread, as wide text.
//
// text     terminated; null or empty gives the empty text
// POSIX    the code page is UTF-8; each byte that is no part of valid UTF-8 becomes one lone surrogate
//          U+DC80..U+DCFF, which every call into the operating system turns back into that byte
// Windows  code page identifier 3, the thread's ANSI code page
std::wstring WidenThreadText(const char* text);

// The longest text that WidenUtf8Text converts, in UTF-16 units.
constexpr size_t kWidenUtf8Limit = 260;

// Narrow UTF-8 text of a caller as wide text; one that needs more than kWidenUtf8Limit UTF-16 units gives
// the empty text. Null gives the empty text. Invalid bytes: as in WidenThreadText on POSIX, U+FFFD on
// Windows.
std::wstring WidenUtf8Text(const char* text);

// Wide text as the bytes of a log line.
//
// POSIX    UTF-8, all of it; what WidenThreadText made of an invalid byte is that byte again
// Windows  the locale's bytes, exactly text.size() of them: what the narrow form has beyond that is cut off
//          between two characters, and the bytes left over are zero
std::string NarrowLogText(std::wstring_view text);

// The text with the letters A to Z in lower case and everything else as it was, in any locale.
std::wstring LowerCaseAscii(std::wstring_view text);

// How a profile without a byte order mark is encoded: on Windows in the code page of the system, elsewhere in
// UTF-8, where bytes that are no valid UTF-8 come through unchanged.
const ProfileCodec& NativeProfileCodec();

}  // namespace vastrelline
