// SPDX-License-Identifier: Apache-2.0
#include "sensor/RowMask.h"

#include <algorithm>
#include <cassert>

#include "pixels/AllocFrame.h"

namespace vastrelline {

namespace {

constexpr int32_t kNoSlot = -1;

}  // namespace

RowMask::RowMask(int32_t width, int32_t height)
    : width_(width), slots_(CountElements<int32_t>(1, height), kNoSlot) {
    CountElements<uint16_t>(width, height);
}

uint16_t* RowMask::Mark(int32_t y) {
    assert(0 <= y && y < Height());
    int32_t& slot = slots_[static_cast<size_t>(y)];
    if (slot == kNoSlot) {
        const auto next = static_cast<int32_t>(markedRows_.size());
        if (next % kRowsInBlock == 0)
            blocks_.push_back(AllocFrame<uint16_t>(width_, std::min(Height() - next, kRowsInBlock)));
        markedRows_.push_back(y);
        slot = next;
        std::fill_n(blocks_.back().data() + PlaceInBlock(slot), width_, uint16_t{0});
    }
    return blocks_[static_cast<size_t>(slot / kRowsInBlock)].data() + PlaceInBlock(slot);
}

const uint16_t* RowMask::Row(int32_t y) const {
    const int32_t slot = slots_[static_cast<size_t>(y)];
    assert(slot != kNoSlot);
    return blocks_[static_cast<size_t>(slot / kRowsInBlock)].data() + PlaceInBlock(slot);
}

}  // namespace vastrelline
