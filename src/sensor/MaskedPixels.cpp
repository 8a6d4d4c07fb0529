#include "sensor/MaskedPixels.h"

#include <algorithm>

#include "operators/histogram/PixelRange.h"
#include "pixels/FrameView.h"

namespace vastrelline {

namespace {

// One half of a row, walked outward. `direction` is 1 where the inside lies to the right of a masked pixel,
// -1 where it lies to the left.
class MirrorFill {
public:
    MirrorFill(uint16_t* row, const uint16_t* maskRow, int32_t direction)
        : row_(row), maskRow_(maskRow), direction_(direction) {}

    void Visit(int32_t x) {
        if (maskRow_[x] != kMasked) return;
        if (count_ == 1) anchor_ = x;
        // The anchor's mirror partner never leaves the row: the count grows by one per visited column.
        row_[x] = row_[anchor_ + direction_ * count_];
        ++count_;
    }

private:
    uint16_t* row_;
    const uint16_t* maskRow_;
    int32_t direction_;
    int32_t count_ = 1;
    int32_t anchor_ = 0;
};

}  // namespace

void FillMaskedPixels(uint16_t* frame, const uint16_t* mask, int32_t width, int32_t height,
                      int32_t /*maxValue*/) {
    const FrameView<uint16_t> pixels(frame, width, height);
    const FrameView<const uint16_t> masks(mask, width, height);
    const int32_t centre = width / 2;
    for (int32_t y = 0; y < height; ++y) {
        MirrorFill left(pixels.Row(y), masks.Row(y), 1);
        MirrorFill right(pixels.Row(y), masks.Row(y), -1);
        for (int32_t i = 1; i <= centre; ++i) {
            left.Visit(centre - i);
            right.Visit(std::min(centre + i, width - 1));
        }
    }
}

void RestoreMaskedPixels(uint16_t* frame, const uint16_t* mask, int32_t width, int32_t height, int32_t flag) {
    constexpr uint16_t kMarker = 4095;
    constexpr size_t kMarkers = 2;
    const FrameView<uint16_t> pixels(frame, width, height);
    const uint16_t background =
        flag != 0 ? uint16_t{0} : static_cast<uint16_t>(MaxPixel(frame, width, height));
    for (size_t i = 0; i < pixels.Count(); ++i) {
        if (mask[i] == kMasked) frame[i] = i < kMarkers ? kMarker : background;
    }
}

}  // namespace vastrelline
