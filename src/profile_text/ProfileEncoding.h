// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "profile_text/Utf8.h"

namespace vastrelline {

// How a profile without a byte order mark turns its bytes into text and back. ASCII has to be itself.
struct ProfileCodec {
    std::wstring (*decode)(std::string_view bytes);
    std::string (*encode)(std::wstring_view text);
};

constexpr ProfileCodec kUtf8Codec = {DecodeUtf8, EncodeUtf8};

// A stretch of a file's bytes.
struct ByteRange {
    size_t begin = 0;
    size_t end = 0;

    size_t Size() const { return end - begin; }
    bool IsEmpty() const { return begin == end; }
};

// The encoding of one profile. A byte order mark decides (UTF-16LE, UTF-16BE, UTF-8); without one it is
// the codec's. The structure of a profile is found unit by unit, a unit being a byte or 16 bits.
//
// Text of UTF-16: a lone surrogate stays one; a pair becomes one character.
class ProfileEncoding {
public:
    ProfileEncoding(std::string_view fileBytes, const ProfileCodec& codec);

    size_t MarkSize() const { return markSize_; }  // bytes; the text starts behind them
    size_t UnitSize() const { return isUtf16_ ? 2 : 1; }

    // offset + UnitSize() <= bytes.size(). Here, for every byte of a profile passes through it.
    uint32_t UnitAt(std::string_view bytes, size_t offset) const {
        const auto first = static_cast<uint8_t>(bytes[offset]);
        if (!isUtf16_) return first;
        const auto second = static_cast<uint8_t>(bytes[offset + 1]);
        return isBigEndian_ ? uint32_t{first} << 8U | second : uint32_t{second} << 8U | first;
    }
    std::wstring Decode(std::string_view bytes) const;  // whole units
    std::string Encode(std::wstring_view text) const;   // without a mark

private:
    ProfileCodec codec_;
    size_t markSize_ = 0;
    bool isUtf16_ = false;
    bool isBigEndian_ = false;
};

}  // namespace vastrelline
