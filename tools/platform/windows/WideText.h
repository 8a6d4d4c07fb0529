// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <system_error>

namespace vastrelline {

// The system's form of a UTF-8 text. What is no UTF-8 becomes U+FFFD.
std::wstring WidenUtf8(std::string_view text);

// A lone half of a surrogate pair becomes U+FFFD.
std::string NarrowToUtf8(std::wstring_view text);

// A number of the system as a reason; those that other systems know too compare equal to theirs.
std::error_code ReasonOf(DWORD number);
std::error_code LastSystemReason();

}  // namespace vastrelline
