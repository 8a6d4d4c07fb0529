#include "sensor/MarkedRows.h"

#include "operators/histogram/PixelRange.h"

namespace vastrelline {

std::vector<int32_t> FindMarkedRows(const FrameView<const uint16_t>& mask) {
    std::vector<int32_t> rows;
    for (int32_t y = 0; y < mask.Height(); ++y) {
        if (MaxPixel(mask.Row(y), mask.Width(), 1) != 0) rows.push_back(y);
    }
    return rows;
}

}  // namespace vastrelline
