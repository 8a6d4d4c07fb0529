// SPDX-License-Identifier: Apache-2.0
#include "platform/Paths.h"
#include "platform/Text.h"

namespace vastrelline {

std::wstring FolderOfName(std::wstring_view name) {
    const size_t driveEnd = name.find(L':');
    const size_t driveLength = driveEnd == std::wstring_view::npos ? 0 : driveEnd + 1;
    return std::wstring(name.substr(0, driveLength)).append(L".");
}

// File systems here do not tell the cases apart, so the folders are not led astray.
std::wstring LowerCaseFileName(std::wstring_view path) { return LowerCaseAscii(path); }

}  // namespace vastrelline
