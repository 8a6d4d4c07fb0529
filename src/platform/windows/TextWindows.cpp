#include <windows.h>

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

}  // namespace

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
