// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "library/ExportRequest.h"
#include "profile/ProfileFile.h"
#include "workbench/AgainstFiles.h"
#include "workbench/Desk.h"
#include "workbench/FrameShelf.h"
#include "workbench/RunShelf.h"

namespace vastrelline {

// What the page shows beside runs.
struct ShownState {
    uint64_t revision;
    const std::string& path;  // of the profile
    const Desk& desk;
    const ProfileFile& file;  // of the desk's bytes
    ExportKind kind;
    std::vector<FrameShelf::Item> frames;
    const RunShelf& runs;
    const std::vector<AgainstFile>& against;
    std::vector<std::string> notes;  // what a person should know of this workbench
};

nlohmann::ordered_json StateToJson(const ShownState& shown);

}  // namespace vastrelline
