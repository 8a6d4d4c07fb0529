// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <algorithm>
#include <string>

#include "platform/PathText.h"
#include "platform/windows/WideText.h"

namespace vastrelline {

std::filesystem::path PathOf(std::string_view text) { return WidenUtf8(text); }

std::string FoldName(std::string_view name) {
    std::wstring wide = WidenUtf8(name);
    std::replace(wide.begin(), wide.end(), L'/', L'\\');
    CharUpperBuffW(wide.data(), static_cast<DWORD>(wide.size()));
    return NarrowToUtf8(wide);
}

}  // namespace vastrelline
