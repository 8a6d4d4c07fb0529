// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "formats/FrameFile.h"
#include "library/ExportRequest.h"
#include "messages/Finding.h"
#include "profile/SectionPlan.h"
#include "runs/FrameRun.h"

namespace vastrelline {

struct LevelRange {
    uint16_t least = 0;
    uint16_t greatest = 0;
};

// Of no pixels both are 0.
LevelRange RangeOf(const std::vector<uint16_t>& pixels);

// What a run did, for people and for programs.
struct RunReport {
    std::string framePath;
    const LoadedFrame* frame = nullptr;
    LevelRange input;  // before the run, which may change the frame
    std::string profilePath;
    const SectionPlan* plan = nullptr;
    const ExportTraits* traits = nullptr;
    const FrameRun* run = nullptr;
    bool isInPlace = false;
    std::string picturePath;
    std::string pictureKind;  // "8 bits, window 0 to 4095"
    std::string logPath;      // empty: not kept
    std::string stripPath;    // likewise
    std::string recordPath;   // likewise
    std::vector<Finding> findings;
};

// The decision about a frame's exposure; null where nothing was decided.
nlohmann::ordered_json ExposureToJson(const std::optional<DoseFigures>& dose);

// Lines of a word and what it is about; the stages as a table.
void PrintRunReport(std::ostream& out, const RunReport& report);

// The same for programs, as docs/tool-json.md tells.
nlohmann::ordered_json RunToJson(const RunReport& report);

}  // namespace vastrelline
