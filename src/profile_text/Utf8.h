// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace vastrelline {

// UTF-8 as wide text. Each byte that is no part of valid UTF-8 (stray, overlong, a surrogate's code, above
// U+10FFFF, cut off) becomes one lone surrogate U+DC80..U+DCFF, from which EncodeUtf8 makes the same byte:
// EncodeUtf8(DecodeUtf8(bytes)) == bytes for all bytes.
//
// Where wchar_t has 16 bits, a character above U+FFFF takes two.
std::wstring DecodeUtf8(std::string_view bytes);

// Wide text as UTF-8. A lone surrogate U+DC80..U+DCFF becomes its byte; any other lone surrogate, and a
// number above U+10FFFF, becomes '?'.
std::string EncodeUtf8(std::wstring_view text);

}  // namespace vastrelline
