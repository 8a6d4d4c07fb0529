#include "image/LookupTable.h"

#include <algorithm>

#include "image/FrameView.h"

namespace vastrelline {

void ApplyLookupTable(uint16_t* pixels, int32_t width, int32_t height, std::span<const uint16_t> table) {
    if (table.empty()) return;
    const FrameView<uint16_t> frame(pixels, width, height);
    const size_t last = table.size() - 1;
    for (uint16_t& pixel : frame) pixel = table[std::min<size_t>(pixel, last)];
}

}  // namespace vastrelline
