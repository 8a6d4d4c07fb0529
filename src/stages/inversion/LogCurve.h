#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vastrelline {

// A logarithmic curve over the level range of one frame.
struct LogCurve {
    int32_t minLevel;             // the frame's lowest level
    std::vector<uint16_t> table;  // one entry for each level from minLevel to the frame's highest
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

// Writes all levels of the curve to a curve file.
void WriteLogCurve(const std::wstring& path, const LogCurve& curve);

// Builds the curve of a frame and maps the frame through it, in place: the configured chain's form.
//
// saveCurve      not 0: first writes all levels of the curve to a curve file
// path, number   the file is `path` followed directly by "%02d_LogCurve.txt" with the number
void ApplyLogCurve(uint16_t* pixels, int32_t width, int32_t height, double ratio, int32_t inverse,
                   int32_t saveCurve, const std::wstring& path, int32_t number);

}  // namespace vastrelline
