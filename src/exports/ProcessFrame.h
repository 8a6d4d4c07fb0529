// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "chains/ReturnCode.h"
#include "config/SensorSettings.h"

namespace vastrelline {

// The chain that a profile's PROCMODE of 2 selects; each export has its own set of these.
enum class ListedChain : int32_t { Configured, Extended };

// The chain that a PROCMODE of 3 selects.
enum class DecidingChain : int32_t { Fixed, LowExposure };

// A processing export's arguments, with wide text.
struct ProcessCall {
    uint16_t* input;  // width * height pixels; corrected in place
    int32_t width;
    int32_t height;
    std::wstring iniPath;
    std::wstring sectionName;
    bool isMappingOn;                          // map the output afterwards
    bool isSpotCorrectionOn;                   // even out the input's brightness before anything else
    const SensorGeometry* geometry = nullptr;  // the caller's, of this frame; null: the profile's
    ListedChain mode2 = ListedChain::Configured;
    DecidingChain mode3 = DecidingChain::Fixed;
    std::wstring sensorFolder = {};  // for the extended chain
    int32_t sensorMode = 0;          // for the extended chain
};

// The steps that the processing exports share: reads the mode, corrects the input in place, whatever comes of
// the call, runs the driver of that mode and maps the output if asked to.
//
// output    width * height pixels or null
// Returns   the driver's code
ReturnCode ProcessFrame(const ProcessCall& call, uint16_t* output);

// The same into a frame of its own, which leaves the library only as a bitmap.
//
// bitmapPath   where the bitmap goes; empty: nothing is saved
// Returns      the driver's code, or kNoBitmap if that is kSuccess and the bitmap could not be saved
ReturnCode ProcessFrameToBitmap(const ProcessCall& call, const std::wstring& bitmapPath);

}  // namespace vastrelline
