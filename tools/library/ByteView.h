// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace vastrelline {

enum class ByteOrder : uint8_t { LowFirst, HighFirst };

// Numbers and texts of a file that may be cut or bent: what lies outside of it is nothing, and no sum of
// places and lengths wraps round.
class ByteView {
public:
    explicit ByteView(std::span<const uint8_t> bytes, ByteOrder order = ByteOrder::LowFirst)
        : bytes_(bytes), order_(order) {}

    size_t Size() const { return bytes_.size(); }

    // A number of `width` bytes, 1 to 8.
    std::optional<uint64_t> Number(uint64_t at, size_t width) const;

    // A piece, whole or not at all.
    std::optional<ByteView> Piece(uint64_t at, uint64_t length) const;

    // All bytes as text.
    std::string Text() const;

private:
    std::span<const uint8_t> bytes_;
    ByteOrder order_;
};

}  // namespace vastrelline
