// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "platform/Text.h"

namespace vastrelline {

namespace {

// The thread's ANSI code page, as the conversion functions call it.
constexpr UINT kThreadCodePage = CP_THREAD_ACP;

// A text as long as a conversion takes, or 0 for one that is longer.
int ConvertibleLength(const char* text) {
    const size_t length = std::strlen(text);
    return length <= static_cast<size_t>(std::numeric_limits<int>::max()) ? static_cast<int>(length) : 0;
}

// The conversion functions count in int, and a profile is shorter than that. An empty text is an error to
// them.
std::wstring DecodeAnsi(std::string_view bytes) {
    if (bytes.empty() || bytes.size() > static_cast<size_t>(std::numeric_limits<int>::max())) return {};
    const int length = static_cast<int>(bytes.size());
    const int needed = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, nullptr, 0);
    std::wstring text(static_cast<size_t>(std::max(needed, 0)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, text.data(), needed);
    return text;
}

std::string EncodeAnsi(std::wstring_view text) {
    if (text.empty() || text.size() > static_cast<size_t>(std::numeric_limits<int>::max())) return {};
    const int length = static_cast<int>(text.size());
    const int needed = WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(std::max(needed, 0)), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), length, bytes.data(), needed, nullptr, nullptr);
    return bytes;
}

constexpr ProfileCodec kAnsiCodec = {DecodeAnsi, EncodeAnsi};

}  // namespace

const ProfileCodec& NativeProfileCodec() { return kAnsiCodec; }

std::wstring WidenThreadText(const char* text) {
    if (text == nullptr) return {};
    const int length = ConvertibleLength(text);
    if (length == 0) return {};
    const int needed = MultiByteToWideChar(kThreadCodePage, 0, text, length, nullptr, 0);
    if (needed <= 0) return {};
    std::wstring wide(static_cast<size_t>(needed), L'\0');
    if (MultiByteToWideChar(kThreadCodePage, 0, text, length, wide.data(), needed) != needed) return {};
    return wide;
}

std::wstring WidenUtf8Text(const char* text) {
    if (text == nullptr) return {};
    const int length = ConvertibleLength(text);
    if (length == 0) return {};
    std::wstring wide(kWidenUtf8Limit, L'\0');
    // The call itself holds the limit: a text that needs more fails as a whole and gives 0.
    const int converted =
        MultiByteToWideChar(CP_UTF8, 0, text, length, wide.data(), static_cast<int>(kWidenUtf8Limit));
    wide.resize(converted > 0 ? static_cast<size_t>(converted) : 0);
    return wide;
}

std::string NarrowLogText(std::wstring_view text) {
    const std::wstring terminated(text);
    std::string narrow(text.size() + 1, '\0');
    // A character that the locale lacks ends the conversion; what stands before it stays, and the zeroes
    // behind it too. The result of the call therefore does not matter.
    static_cast<void>(std::wcstombs(narrow.data(), terminated.c_str(), narrow.size()));
    narrow.resize(text.size());
    return narrow;
}

}  // namespace vastrelline
