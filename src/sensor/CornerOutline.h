// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// The rounded corners of a full sensor frame, both at its bottom, each the mirror of the other: a chamfer
// that falls by one row per column, or an exponential outline where that is higher.
class CornerOutline {
public:
    // cutOff        size of the chamfer; 0 or less: none
    // cutOffRight   size of the exponential outline; 0 or less: none
    // Arithmetic    32-bit floats; the exponentials in double
    CornerOutline(int32_t frameWidth, int32_t frameHeight, int32_t cutOff, int32_t cutOffRight);

    int32_t FrameWidth() const { return frameWidth_; }
    int32_t FrameHeight() const { return frameHeight_; }

    // How many of the lowest rows a column of the frame hides: 0 to all.
    int32_t HiddenRows(int32_t column) const;

    // The same by the outline of the left corner alone, followed to the middle column and not clamped to
    // the frame: 0 or less for none.
    int32_t HiddenRowsAtLeft(int32_t column) const;

private:
    int32_t frameWidth_;
    int32_t frameHeight_;
    int32_t cutOff_;
    int32_t cutOffRight_;
    float slope_;
    float step_;
    float first_;
    float scale_;
};

}  // namespace vastrelline
