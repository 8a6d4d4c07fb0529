// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vastrelline {

struct FrameSize {
    int32_t width = 0;
    int32_t height = 0;

    bool operator==(const FrameSize&) const = default;
};

// Whether the library takes a frame of this size: both sides 1 or more, fewer than 2^29 pixels.
bool IsUsableSize(FrameSize size);

// "1300x1668": two decimal numbers with an x or X between them and nothing else. Nothing for any other text
// and for a size that is not usable.
std::optional<FrameSize> ParseFrameSize(std::string_view text);

// The size that a file name tells at its end: "raw/tooth_1300x1668.raw" gives 1300 x 1668. The numbers
// follow the last underscore of the name without its ending.
std::optional<FrameSize> FrameSizeInName(std::string_view path);

// "1300x1668"
std::string FormatFrameSize(FrameSize size);

}  // namespace vastrelline
