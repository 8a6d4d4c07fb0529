// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "commands/RunOptions.h"
#include "formats/FrameFile.h"
#include "library/ExportRequest.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"

namespace vastrelline {

// What of a frame and a section all reports begin with that tell of a folder of pictures.

// "tooth.png, section General"
std::string RunTitle(const RunOptions& options);

// frame, profile, profileSha256, section, export, chain; as docs/tool-json.md tells.
nlohmann::ordered_json RunHeadJson(const std::string& framePath, const LoadedFrame& frame,
                                   const ProfileFile& profile, const SectionPlan& plan,
                                   const ExportTraits& traits);

}  // namespace vastrelline
