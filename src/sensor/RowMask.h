// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "pixels/ScratchVector.h"

namespace vastrelline {

// What is hidden of a frame, row by row; 0 is seen. Few rows hide anything, and only those are kept: to clear
// and to search a mask of a whole frame would cost as much as a curve over its pixels.
class RowMask {
public:
    // Nothing is hidden. Errors as CountElements.
    RowMask(int32_t width, int32_t height);

    int32_t Width() const { return width_; }
    int32_t Height() const { return static_cast<int32_t>(slots_.size()); }

    // A row to mark pixels in; 0 at first. It stays where it is.
    uint16_t* Mark(int32_t y);

    // The rows that have been asked for, each once, in that order.
    std::span<const int32_t> MarkedRows() const { return markedRows_; }

    // One of these.
    const uint16_t* Row(int32_t y) const;

private:
    static constexpr int32_t kRowsInBlock = 64;

    size_t PlaceInBlock(int32_t slot) const {
        return static_cast<size_t>(slot % kRowsInBlock) * static_cast<size_t>(width_);
    }

    int32_t width_;
    std::vector<int32_t> slots_;  // of each row; kNoSlot for one that hides nothing
    std::vector<int32_t> markedRows_;
    std::vector<ScratchVector<uint16_t>> blocks_;  // of rows, slot after slot
};

}  // namespace vastrelline
