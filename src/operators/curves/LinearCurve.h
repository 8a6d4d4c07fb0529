#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vastrelline {

// A straight ramp from level 0 to `high`, in a table of one entry per level 0..maxValue, at most 0..65535.
//
// maxValue      0 or more. Above 65535 the table ends at 65535: no pixel reaches further
// outputRange   the output at `high` and above
// limitBin      mode 1: the ramp's top is the level at which the count of pixels from maxValue down to 1
//               passes it; where none does, all levels map to 0. Other modes: -1 makes maxValue the top;
//               otherwise the top is the last level whose count, smoothed over 50 levels, is above it, or
//               maxValue
// Rounding      truncation toward zero, within 0..outputRange
std::vector<uint16_t> BuildLinearCurve(const uint16_t* pixels, int32_t width, int32_t height,
                                       int32_t maxValue, int32_t outputRange, int32_t limitBin, int32_t mode);

// The same from the counts of a frame's levels.
//
// histogram   maxValue + 1 bins; above level 65535 + 64 they need not exist. Not read for the full range
std::vector<uint16_t> BuildLinearCurve(std::span<const uint32_t> histogram, int32_t maxValue,
                                       int32_t outputRange, int32_t limitBin, int32_t mode);

// Builds the curve of a frame and maps the frame through it, in place. Pixels above the table take its last
// entry.
//
// saveCurve      not 0: first writes all levels of the table to a curve file
// path, number   the file is `path` followed directly by "%02d_LinearCurve.txt" with the number
void ApplyLinearCurve(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t outputRange,
                      int32_t limitBin, int32_t mode, int32_t saveCurve, const std::wstring& path,
                      int32_t number);

// Maps a frame through a ramp around a centre, in place: from 0 at half a window below to outputRange at half
// a window above, flat outside.
//
// windowWidth    levels; half of it is rounded to the nearest, halves up
// saveCurve      not 0: first writes levels 0 to the ramp's end, as far as the frame reaches, to a curve file
// path, number   the file is `path` followed directly by "%02d_LinearCurve2.txt" with the number
void ApplyWindowCurve(uint16_t* pixels, int32_t width, int32_t height, int32_t windowWidth, int32_t centre,
                      int32_t outputRange, int32_t saveCurve, const std::wstring& path, int32_t number);

}  // namespace vastrelline
