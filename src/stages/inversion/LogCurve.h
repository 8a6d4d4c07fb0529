// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

namespace vastrelline {

// A logarithmic curve over the level range of one frame.
struct LogCurve {
    int32_t minLevel;             // the frame's lowest level
    std::vector<uint16_t> table;  // one entry for each level from minLevel to the frame's highest
};

// The curve as a function of the level.
class LogShape {
public:
    // minLevel, maxLevel   the frame's lowest and highest level
    // ratio, inverse       as BuildLogCurve
    LogShape(int32_t minLevel, int32_t maxLevel, double ratio, int32_t inverse);

    // level   minLevel to maxLevel
    uint16_t EntryAt(int32_t level) const;
    LogCurve Table() const;

private:
    int32_t minLevel_;
    int32_t span_;
    double sign_;
    int32_t offset_;
    int32_t k_;
    double logK_;
    double denominator_;
};

// Builds the curve from a frame.
//
// ratio     how far along the logarithm the frame begins, as a fraction of its span of levels; its sign has
//           no effect. Large: nearly straight; small: steep at the start
// inverse   not 0: inverted; minLevel then maps to one above the frame's range
LogCurve BuildLogCurve(const uint16_t* pixels, int32_t width, int32_t height, double ratio, int32_t inverse);

// Maps a frame through the curve, in place. Levels outside the curve, which its own frame has none of, take
// its nearest entry.
void ApplyLogTable(uint16_t* pixels, int32_t width, int32_t height, const LogCurve& curve);

}  // namespace vastrelline
