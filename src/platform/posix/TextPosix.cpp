// SPDX-License-Identifier: Apache-2.0
#include "platform/Text.h"
#include "profile_text/Utf8.h"

namespace vastrelline {

namespace {

size_t CountUtf16Units(std::wstring_view text) {
    constexpr wchar_t kLastOfOneUnit = 0xFFFF;
    size_t count = 0;
    for (const wchar_t character : text) count += character > kLastOfOneUnit ? 2 : 1;
    return count;
}

}  // namespace

std::wstring WidenThreadText(const char* text) { return text == nullptr ? std::wstring() : DecodeUtf8(text); }

std::wstring WidenUtf8Text(const char* text) {
    std::wstring wide = WidenThreadText(text);
    if (CountUtf16Units(wide) > kWidenUtf8Limit) wide.clear();
    return wide;
}

const ProfileCodec& NativeProfileCodec() { return kUtf8Codec; }

std::string NarrowLogText(std::wstring_view text) { return EncodeUtf8(text); }

}  // namespace vastrelline
