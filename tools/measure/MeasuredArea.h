// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "frames/Frame.h"

namespace vastrelline {

// Why a frame cannot be measured, and what to do about it.
class CannotMeasure : public std::runtime_error {
public:
    explicit CannotMeasure(const std::string& what, std::string remedy = {})
        : std::runtime_error(what), remedy_(std::move(remedy)) {}

    const std::string& Remedy() const { return remedy_; }

private:
    std::string remedy_;
};

struct PixelArea {
    int32_t left = 0;
    int32_t top = 0;
    int32_t width = 0;
    int32_t height = 0;

    bool operator==(const PixelArea&) const = default;
};

// "10,20,300,200": column, row, width and height in decimal digits, both sizes 1 or more. Nothing for any
// other text.
std::optional<PixelArea> ParsePixelArea(std::string_view text);

// The pixels of an area as a frame of their own. Throws CannotMeasure if it is not wholly inside.
Frame CutArea(const Frame& frame, const PixelArea& area);

// Rows become columns.
Frame Transpose(const Frame& frame);

// The level at which bright pixels are cut: the brightest one if it is all bits set, of 8 bits or more;
// otherwise none is known, and 65536 is returned.
int32_t ClippingLevel(const Frame& frame);

}  // namespace vastrelline
