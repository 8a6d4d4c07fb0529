#pragma once

#include <cstdint>
#include <string>

#include "config/SensorSettings.h"
#include "entry/ReturnCode.h"

namespace vastrelline {

// Driver of the configured chain: runs the stages that a section of the profile lists, in that order, on a
// copy of the frame.
//
// input, output   width * height pixels each; `input` is only read
// geometry        the caller's geometry of this frame, or null for the profile's
// width, height   0 or less: the arguments are tested, then nothing is done
// Returns         kSuccess, or the code of the first argument test that fails: kNoProfile, kNoInput,
//                 kNoOutput, kNoSection; nothing is written then
ReturnCode RunConfiguredChain(const uint16_t* input, uint16_t* output, int32_t width, int32_t height,
                              const std::wstring& iniPath, const std::wstring& sectionName,
                              const SensorGeometry* geometry);

}  // namespace vastrelline
