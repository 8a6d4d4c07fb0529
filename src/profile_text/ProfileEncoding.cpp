// SPDX-License-Identifier: Apache-2.0
#include "profile_text/ProfileEncoding.h"

namespace vastrelline {

namespace {

constexpr std::string_view kUtf16LittleEndianMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigEndianMark = "\xFE\xFF";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// Where a wide character holds a unit of UTF-16 alone, the two of a pair stay apart.
constexpr bool kJoinsPairs = sizeof(wchar_t) > sizeof(char16_t);

constexpr uint32_t kFirstSupplementary = 0x10000;
constexpr uint32_t kLastCharacter = 0x10FFFF;

bool IsHighSurrogate(uint32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(uint32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

}  // namespace

ProfileEncoding::ProfileEncoding(std::string_view fileBytes, const ProfileCodec& codec) : codec_(codec) {
    if (fileBytes.starts_with(kUtf8Mark)) {
        markSize_ = kUtf8Mark.size();
        codec_ = kUtf8Codec;
    } else if (fileBytes.starts_with(kUtf16LittleEndianMark) || fileBytes.starts_with(kUtf16BigEndianMark)) {
        markSize_ = kUtf16LittleEndianMark.size();
        isUtf16_ = true;
        isBigEndian_ = fileBytes.starts_with(kUtf16BigEndianMark);
    }
}

std::wstring ProfileEncoding::Decode(std::string_view bytes) const {
    if (!isUtf16_) return codec_.decode(bytes);
    std::wstring text;
    text.reserve(bytes.size() / 2);
    for (size_t offset = 0; offset + 1 < bytes.size(); offset += 2) {
        uint32_t value = UnitAt(bytes, offset);
        if (kJoinsPairs && IsHighSurrogate(value) && offset + 3 < bytes.size()) {
            const uint32_t next = UnitAt(bytes, offset + 2);
            if (IsLowSurrogate(next)) {
                value = kFirstSupplementary + ((value - 0xD800) << 10U) + (next - 0xDC00);
                offset += 2;
            }
        }
        text.push_back(static_cast<wchar_t>(value));
    }
    return text;
}

std::string ProfileEncoding::Encode(std::wstring_view text) const {
    if (!isUtf16_) return codec_.encode(text);
    std::string bytes;
    const auto append = [&](uint32_t unit) {
        const auto low = static_cast<char>(unit & 0xFFU);
        const auto high = static_cast<char>(unit >> 8U);
        bytes.push_back(isBigEndian_ ? high : low);
        bytes.push_back(isBigEndian_ ? low : high);
    };
    for (const wchar_t character : text) {
        const uint32_t value = static_cast<char32_t>(character);
        if (value > kLastCharacter) {
            append(L'?');
        } else if (value >= kFirstSupplementary) {
            append(0xD800 + ((value - kFirstSupplementary) >> 10U));
            append(0xDC00 + ((value - kFirstSupplementary) & 0x3FFU));
        } else {
            append(value);
        }
    }
    return bytes;
}

}  // namespace vastrelline
