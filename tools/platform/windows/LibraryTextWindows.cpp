// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <cstddef>
#include <filesystem>

#include "platform/LibraryText.h"
#include "platform/windows/WideText.h"

namespace vastrelline {
namespace {

bool IsThreadPageUtf8() {
    CPINFOEXW page = {};
    return GetCPInfoExW(CP_THREAD_ACP, 0, &page) != FALSE && page.CodePage == CP_UTF8;
}

std::optional<std::string> EncodeForThread(const std::wstring& text) {
    if (text.empty()) return std::string();
    const bool isUtf8 = IsThreadPageUtf8();
    // Neither is taken with UTF-8, which lacks nothing.
    const DWORD flags = isUtf8 ? 0 : WC_NO_BEST_FIT_CHARS;
    BOOL isLacking = FALSE;
    BOOL* const lacking = isUtf8 ? nullptr : &isLacking;
    const int length = static_cast<int>(text.size());
    const int needed =
        WideCharToMultiByte(CP_THREAD_ACP, flags, text.data(), length, nullptr, 0, nullptr, lacking);
    if (needed <= 0 || isLacking != FALSE) return std::nullopt;
    std::string bytes(static_cast<size_t>(needed), '\0');
    WideCharToMultiByte(CP_THREAD_ACP, flags, text.data(), length, bytes.data(), needed, nullptr, nullptr);
    return bytes;
}

// Of what is not there yet, its folder's.
std::wstring ShortPath(const std::filesystem::path& path) {
    const DWORD size = GetShortPathNameW(path.c_str(), nullptr, 0);
    if (size == 0) {
        if (!path.has_parent_path() || path.parent_path() == path) return path.wstring();
        return (std::filesystem::path(ShortPath(path.parent_path())) / path.filename()).wstring();
    }
    std::wstring shorter(size, L'\0');
    shorter.resize(GetShortPathNameW(path.c_str(), shorter.data(), size));
    return shorter;
}

}  // namespace

std::optional<std::string> LibraryText(const std::string& text) { return EncodeForThread(WidenUtf8(text)); }

std::optional<std::string> LibraryPath(const std::string& path) {
    const std::wstring wide = WidenUtf8(path);
    const std::optional<std::string> whole = EncodeForThread(wide);
    return whole ? whole : EncodeForThread(ShortPath(wide));
}

}  // namespace vastrelline
