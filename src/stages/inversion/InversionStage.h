// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "config/CommonSettings.h"
#include "config/FixedSettings.h"
#include "operators/curves/TonedFrame.h"
#include "report/LogFile.h"

namespace vastrelline {

// Each of these takes the pixels of a frame, which it maps at once, or a frame whose curves wait.

// The inversion of the configured chain: inverts the frame, in place, so that what took up much radiation
// comes out bright. Writes no log line, and dumps the frame as "%02d_OriginalImage_Invert.raw" if image
// saving is on, whatever the mode.
//
// pixelCount   without effect: width * height
// log          without effect
// settings     INVERSE_INTENSITY is the mode: 1 plain, 2 through a logarithmic curve, 3 through a power
//              curve, any other leaves the pixels; INVERSE_LOGRATIO is the curve's parameter
void RunInversion(uint16_t* pixels, int32_t width, int32_t height, int32_t pixelCount, int32_t maxValue,
                  LogFile& log, const CommonSettings& settings);
void RunInversion(TonedFrame& frame, int32_t maxValue, const CommonSettings& settings);

// The same in the fixed chain, which has no power curve: a mode other than 1 and 2 leaves the pixels.
//
// dumpCounter   the run's next dump number
void RunFixedInversion(uint16_t* pixels, int32_t width, int32_t height, int32_t pixelCount, int32_t maxValue,
                       int32_t& dumpCounter, LogFile& log, const FixedSettings& settings);
void RunFixedInversion(TonedFrame& frame, int32_t maxValue, int32_t& dumpCounter,
                       const FixedSettings& settings);

// Builds the logarithmic curve of a frame and maps the frame through it, in place: the configured chain's
// form.
//
// ratio, inverse   as BuildLogCurve
// saveCurve        not 0: first writes all levels of the curve to a curve file
// path, number     the file is `path` followed directly by "%02d_LogCurve.txt" with the number
void ApplyLogCurve(uint16_t* pixels, int32_t width, int32_t height, double ratio, int32_t inverse,
                   int32_t saveCurve, const std::wstring& path, int32_t number);
void ApplyLogCurve(TonedFrame& frame, double ratio, int32_t inverse, int32_t saveCurve,
                   const std::wstring& path, int32_t number);

// The fixed chain's form. If that chain saves images, the curve file is "InverseCurve.txt" in its folder,
// without a number.
void ApplyFixedLogCurve(uint16_t* pixels, int32_t width, int32_t height, double ratio, int32_t inverse);
void ApplyFixedLogCurve(TonedFrame& frame, double ratio, int32_t inverse);

}  // namespace vastrelline
