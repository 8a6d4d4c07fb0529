#pragma once

#include <cstdint>
#include <string>

#include "entry/ReturnCode.h"

namespace vastrelline {

// A processing export's arguments, with wide text.
struct ProcessCall {
    uint16_t* input;  // width * height pixels
    int32_t width;
    int32_t height;
    std::wstring iniPath;
    std::wstring sectionName;
    bool isMappingOn;  // map the output afterwards
};

// The steps that every processing export shares: runs the driver (the configured chain, whatever PROCMODE,
// as long as there is no other) and maps the output if asked to.
//
// output    width * height pixels or null
// Returns   the driver's code
// Errors    std::length_error from kPixelCountLimit pixels on, unless an argument test comes first and no
//           mapping follows
ReturnCode ProcessFrame(const ProcessCall& call, uint16_t* output);

// The same into a frame of its own, which leaves the library only as a bitmap.
//
// bitmapPath   where the bitmap goes; empty: nothing is saved
// Returns      the driver's code, or kNoBitmap if that is kSuccess and the bitmap could not be saved
ReturnCode ProcessFrameToBitmap(const ProcessCall& call, const std::wstring& bitmapPath);

}  // namespace vastrelline
