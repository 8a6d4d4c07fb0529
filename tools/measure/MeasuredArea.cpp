// SPDX-License-Identifier: Apache-2.0
#include "measure/MeasuredArea.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

namespace vastrelline {

std::optional<PixelArea> ParsePixelArea(std::string_view text) {
    std::array<int32_t, 4> numbers{};
    const char* at = text.data();
    const char* const end = text.data() + text.size();
    for (size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0 && (at == end || *at++ != ',')) return std::nullopt;
        if (at == end || *at < '0' || *at > '9') return std::nullopt;
        const auto [next, error] = std::from_chars(at, end, numbers[i]);
        if (error != std::errc()) return std::nullopt;
        at = next;
    }
    const PixelArea area{numbers[0], numbers[1], numbers[2], numbers[3]};
    if (at != end || area.width < 1 || area.height < 1) return std::nullopt;
    return area;
}

Frame CutArea(const Frame& frame, const PixelArea& area) {
    if (int64_t{area.left} + area.width > frame.width || int64_t{area.top} + area.height > frame.height)
        throw CannotMeasure("the area reaches beyond the frame of " + std::to_string(frame.width) + "x" +
                                std::to_string(frame.height),
                            "--area takes column, row, width and height");
    Frame cut{area.width, area.height, {}};
    cut.pixels.reserve(PixelCount(area.width, area.height));
    for (int32_t y = 0; y < area.height; ++y) {
        const auto row = frame.pixels.begin() +
                         static_cast<std::ptrdiff_t>(PixelCount(frame.width, area.top + y)) + area.left;
        cut.pixels.insert(cut.pixels.end(), row, row + area.width);
    }
    return cut;
}

Frame Transpose(const Frame& frame) {
    Frame turned{frame.height, frame.width, std::vector<uint16_t>(frame.pixels.size())};
    for (int32_t y = 0; y < frame.height; ++y)
        for (int32_t x = 0; x < frame.width; ++x)
            turned.pixels[PixelCount(frame.height, x) + static_cast<size_t>(y)] =
                frame.pixels[PixelCount(frame.width, y) + static_cast<size_t>(x)];
    return turned;
}

int32_t ClippingLevel(const Frame& frame) {
    constexpr int32_t kLeastTop = 255;
    constexpr int32_t kNever = 65536;
    const int32_t brightest =
        frame.pixels.empty() ? 0 : *std::max_element(frame.pixels.begin(), frame.pixels.end());
    return brightest >= kLeastTop && (brightest & (brightest + 1)) == 0 ? brightest : kNever;
}

}  // namespace vastrelline
