// SPDX-License-Identifier: Apache-2.0
#include "library/ByteView.h"

namespace vastrelline {

std::optional<uint64_t> ByteView::Number(uint64_t at, size_t width) const {
    const std::optional<ByteView> piece = Piece(at, width);
    if (!piece) return std::nullopt;
    uint64_t number = 0;
    for (size_t i = 0; i < width; ++i) {
        const size_t place = order_ == ByteOrder::HighFirst ? i : width - 1 - i;
        number = number << 8U | piece->bytes_[place];
    }
    return number;
}

std::optional<ByteView> ByteView::Piece(uint64_t at, uint64_t length) const {
    if (at > bytes_.size() || length > bytes_.size() - at) return std::nullopt;
    return ByteView(bytes_.subspan(static_cast<size_t>(at), static_cast<size_t>(length)), order_);
}

std::string ByteView::Text() const { return {bytes_.begin(), bytes_.end()}; }

}  // namespace vastrelline
