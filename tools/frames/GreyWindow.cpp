// SPDX-License-Identifier: Apache-2.0
#include "frames/GreyWindow.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string>
#include <system_error>

namespace vastrelline {
namespace {

constexpr int32_t kWhite = 255;

std::optional<int32_t> ParseLevel(std::string_view digits) {
    uint16_t level = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, level);
    if (error != std::errc() || stop != end) return std::nullopt;
    return level;
}

}  // namespace

std::optional<GreyWindow> ParseGreyWindow(std::string_view text) {
    const size_t colon = text.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    const std::optional<int32_t> low = ParseLevel(text.substr(0, colon));
    const std::optional<int32_t> high = ParseLevel(text.substr(colon + 1));
    if (!low || !high || *low >= *high) return std::nullopt;
    return GreyWindow{*low, *high};
}

std::vector<uint8_t> RenderThroughWindow(const Frame& frame, GreyWindow window) {
    const int64_t span = int64_t{window.high} - window.low;
    std::vector<uint8_t> picture(frame.pixels.size());
    std::transform(frame.pixels.begin(), frame.pixels.end(), picture.begin(), [&](uint16_t pixel) {
        const int64_t above = std::clamp<int64_t>(int64_t{pixel} - window.low, 0, span);
        return static_cast<uint8_t>((2 * above * kWhite + span) / (2 * span));
    });
    return picture;
}

}  // namespace vastrelline
