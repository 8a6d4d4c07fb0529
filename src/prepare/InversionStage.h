#pragma once

#include <cstdint>

#include "config/CommonSettings.h"
#include "diagnostics/LogFile.h"

namespace vastrelline {

// Replaces every pixel by maxValue - pixel, in 16 bits: a pixel above maxValue wraps.
void InvertPixels(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue);

// The inversion of the configured chain: turns the frame over, in place, so that what took up much radiation
// comes out bright. Writes no log line, and dumps the frame as "%02d_OriginalImage_Invert.raw" if image
// saving is on, whatever the mode.
//
// pixelCount   without effect: width * height
// log          without effect
// settings     INVERSE_INTENSITY is the mode: 1 plain, 2 through a logarithmic curve, 3 through a power
//              curve, any other leaves the pixels; INVERSE_LOGRATIO is the curve's parameter
void RunInversion(uint16_t* pixels, int32_t width, int32_t height, int32_t pixelCount, int32_t maxValue,
                  LogFile& log, const CommonSettings& settings);

}  // namespace vastrelline
