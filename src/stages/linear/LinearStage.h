// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "operators/curves/TonedFrame.h"
#include "report/LogFile.h"

namespace vastrelline {

// Each of these takes the pixels of a frame, which it maps at once, or a frame whose curves wait.

// Builds the curve of a frame and maps the frame through it, in place. Pixels above the table take its last
// entry.
//
// saveCurve      not 0: first writes all levels of the table to a curve file, with the curve's own value
// where a
//                pixel takes the low 16 bits only
// path, number   the file is `path` followed directly by "%02d_LinearCurve.txt" with the number
void ApplyLinearCurve(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t outputRange,
                      int32_t limitBin, int32_t mode, int32_t saveCurve, const std::wstring& path,
                      int32_t number);
void ApplyLinearCurve(TonedFrame& frame, int32_t maxValue, int32_t outputRange, int32_t limitBin,
                      int32_t mode, int32_t saveCurve, const std::wstring& path, int32_t number);

// Maps a frame through a ramp around a centre, in place: from 0 at half a window below to outputRange at half
// a window above, flat outside.
//
// windowWidth    levels; half of it is rounded to the nearest, halves up
// saveCurve      not 0: first writes levels 0 to the ramp's end, as far as the frame reaches, to a curve
// file,
//                likewise
// path, number   the file is `path` followed directly by "%02d_LinearCurve2.txt" with the number
void ApplyWindowCurve(uint16_t* pixels, int32_t width, int32_t height, int32_t windowWidth, int32_t centre,
                      int32_t outputRange, int32_t saveCurve, const std::wstring& path, int32_t number);
void ApplyWindowCurve(TonedFrame& frame, int32_t windowWidth, int32_t centre, int32_t outputRange,
                      int32_t saveCurve, const std::wstring& path, int32_t number);

// The linear stage of the configured chain: maps the frame through a straight ramp, in place, and writes the
// curve file and its log lines as the run's switches ask. It writes no dump and does not step the dump
// number: its curve file carries the number of the next dump.
//
// position   in the stage list, which names its keys
void RunLinearStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                    int32_t position);
void RunLinearStage(TonedFrame& frame, int32_t maxValue, LogFile& log, int32_t position);

}  // namespace vastrelline
