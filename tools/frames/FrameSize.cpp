// SPDX-License-Identifier: Apache-2.0
#include "frames/FrameSize.h"

#include <charconv>
#include <filesystem>
#include <system_error>

#include "platform/PathText.h"

namespace vastrelline {
namespace {

constexpr int64_t kPixelLimit = int64_t{1} << 29;  // the library refuses frames from this many pixels on

std::optional<int32_t> ParseSide(std::string_view digits) {
    int32_t side = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, side);
    if (error != std::errc() || stop != end) return std::nullopt;
    return side;
}

}  // namespace

bool IsUsableSize(FrameSize size) {
    return size.width > 0 && size.height > 0 && int64_t{size.width} * size.height < kPixelLimit;
}

std::optional<FrameSize> ParseFrameSize(std::string_view text) {
    const size_t cross = text.find_first_of("xX");
    if (cross == std::string_view::npos) return std::nullopt;
    const std::optional<int32_t> width = ParseSide(text.substr(0, cross));
    const std::optional<int32_t> height = ParseSide(text.substr(cross + 1));
    if (!width || !height) return std::nullopt;
    const FrameSize size{*width, *height};
    if (!IsUsableSize(size)) return std::nullopt;
    return size;
}

std::optional<FrameSize> FrameSizeInName(std::string_view path) {
    const std::string name = PathOf(path).stem().string();
    const size_t underscore = name.rfind('_');
    if (underscore == std::string::npos) return std::nullopt;
    return ParseFrameSize(std::string_view(name).substr(underscore + 1));
}

std::string FormatFrameSize(FrameSize size) {
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

}  // namespace vastrelline
