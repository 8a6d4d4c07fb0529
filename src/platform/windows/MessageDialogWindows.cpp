// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include "platform/PlatformMessage.h"

namespace vastrelline {

void ShowPlatformMessage(const std::wstring& text, MessageIcon icon) {
    const UINT style = MB_OK | (icon == MessageIcon::Error ? MB_ICONERROR : 0U);
    // No title of its own; without any the system would write one above every box, in its own language:
    // "Error".
    constexpr const wchar_t* kNoTitle = L"";
    // Without a screen the call fails at once; there is nobody to be told, and the run goes on.
    static_cast<void>(MessageBoxW(nullptr, text.c_str(), kNoTitle, style));
}

}  // namespace vastrelline
