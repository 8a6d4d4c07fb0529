// SPDX-License-Identifier: Apache-2.0
#include "platform/Paths.h"
#include "platform/Text.h"

namespace vastrelline {

std::wstring FolderOfName(std::wstring_view /*name*/) { return L"."; }

std::wstring LowerCaseFileName(std::wstring_view path) {
    const size_t separator = FindLastSeparator(path);
    const size_t nameStart = separator == std::wstring_view::npos ? 0 : separator + 1;
    return std::wstring(path.substr(0, nameStart)).append(LowerCaseAscii(path.substr(nameStart)));
}

}  // namespace vastrelline
