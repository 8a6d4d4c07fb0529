// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>

namespace vastrelline {

// A frame that someone else owns: rows from the top, stride equal to width. Cheap to copy, never frees.
template <typename Pixel>
class FrameView {
public:
    FrameView(Pixel* pixels, int32_t width, int32_t height)
        : pixels_(pixels), width_(width), height_(height) {
        assert(width >= 0 && height >= 0);
        assert(pixels != nullptr || Count() == 0);
    }

    int32_t Width() const { return width_; }
    int32_t Height() const { return height_; }
    size_t Count() const { return static_cast<size_t>(width_) * static_cast<size_t>(height_); }

    Pixel* Row(int32_t y) const {
        assert(0 <= y && y < height_);
        return pixels_ + static_cast<size_t>(y) * static_cast<size_t>(width_);
    }

    Pixel* begin() const { return pixels_; }
    Pixel* end() const { return pixels_ + Count(); }

private:
    Pixel* pixels_;
    int32_t width_;
    int32_t height_;
};

}  // namespace vastrelline
