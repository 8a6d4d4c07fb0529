// SPDX-License-Identifier: Apache-2.0
#include <windows.h>
// after windows.h, which they need
#include <objbase.h>
#include <shellapi.h>

#include <cstdint>

#include "platform/BrowserOpen.h"
#include "platform/windows/WideText.h"

namespace vastrelline {
namespace {

// What opens addresses may be an object that lives in this thread.
struct ObjectsOfThread {
    HRESULT begun = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
    ObjectsOfThread() = default;
    ObjectsOfThread(const ObjectsOfThread&) = delete;
    ObjectsOfThread& operator=(const ObjectsOfThread&) = delete;
    ~ObjectsOfThread() {
        if (SUCCEEDED(begun)) CoUninitialize();
    }
};

}  // namespace

bool OpenInBrowser(const std::string& address) {
    constexpr intptr_t kLastFailure = 32;
    const ObjectsOfThread objects;
    const HINSTANCE result =
        ShellExecuteW(nullptr, L"open", WidenUtf8(address).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<intptr_t>(result) > kLastFailure;
}

}  // namespace vastrelline
