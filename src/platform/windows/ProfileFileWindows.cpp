#include <windows.h>

#include <string>
#include <string_view>

#include "platform/ProfileFile.h"

namespace vastrelline {

namespace {

// The profile functions look for a bare file name in the folder of Windows. Everybody else takes it as
// lying in the current folder, so it is made a whole path first. Empty: no such file can exist.
std::wstring WholePath(const wchar_t* path) {
    if (path == nullptr || *path == L'\0') return {};
    if (std::wstring_view(path).find_first_of(L"\\/:") != std::wstring_view::npos) return path;
    const DWORD needed = GetFullPathNameW(path, 0, nullptr, nullptr);
    std::wstring whole(needed, L'\0');  // the size asked for holds the terminator, the one returned does not
    const DWORD length = GetFullPathNameW(path, needed, whole.data(), nullptr);
    if (length == 0 || length >= needed) return {};
    whole.resize(length);
    return whole;
}

}  // namespace

int32_t PlatformProfileInt(const wchar_t* section, const wchar_t* key, int32_t defaultValue,
                           const wchar_t* path) {
    const std::wstring whole = WholePath(path);
    if (whole.empty() || section == nullptr || key == nullptr) return defaultValue;
    return static_cast<int32_t>(GetPrivateProfileIntW(section, key, defaultValue, whole.c_str()));
}

uint32_t PlatformProfileString(const wchar_t* section, const wchar_t* key, const wchar_t* defaultValue,
                               wchar_t* buffer, uint32_t size, const wchar_t* path) {
    // A path that names no file would mean win.ini; one that cannot exist gives the default by itself.
    const std::wstring whole = WholePath(path);
    const wchar_t* const file = whole.empty() ? L"\\\\.\\no profile" : whole.c_str();
    return GetPrivateProfileStringW(section, key, defaultValue, buffer, size, file);
}

uint32_t PlatformProfileSection(const wchar_t* section, wchar_t* buffer, uint32_t size, const wchar_t* path) {
    const std::wstring whole = WholePath(path);
    if (whole.empty() || section == nullptr) {
        if (size > 0) buffer[0] = L'\0';
        if (size > 1) buffer[1] = L'\0';
        return 0;
    }
    return GetPrivateProfileSectionW(section, buffer, size, whole.c_str());
}

bool PlatformWriteProfile(const wchar_t* section, const wchar_t* key, const wchar_t* value,
                          const wchar_t* path) {
    const std::wstring whole = WholePath(path);
    if (whole.empty() || section == nullptr) return false;
    return WritePrivateProfileStringW(section, key, value, whole.c_str()) != 0;
}

}  // namespace vastrelline
