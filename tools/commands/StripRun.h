// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "frames/Frame.h"
#include "library/ExportRequest.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "runs/FrameRun.h"

namespace vastrelline {

// A PNG of 8 bits: the frame before, after, and after every stage, each with its name and time. The frames
// come from a second run, with dumps, the times from the first one, without.
//
// first      the run whose times are shown
// frame      as it was read
// topLevel   the level that is shown white
// Errors     as the caller of exports; ProcessingError if the second run gives another code;
//            OutputError if it leaves no dumps
std::vector<uint8_t> MakeStrip(const ProfileFile& file, const SectionPlan& plan, const FrameRun& first,
                               const Frame& frame, int32_t topLevel, const ExportCaller& callExport);

}  // namespace vastrelline
