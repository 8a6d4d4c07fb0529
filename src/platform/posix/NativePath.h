// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace vastrelline {

// A path as the operating system takes it: every '\' becomes '/', and bytes that were no valid UTF-8 when
// the path came in are themselves again.
std::string NativePath(std::wstring_view path);

}  // namespace vastrelline
