// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "commands/FolderRun.h"
#include "commands/RunOptions.h"
#include "profile/SectionPlan.h"
#include "runs/PointDifference.h"

namespace vastrelline {

// A build of the library in a comparison.
struct ComparedBuild {
    std::string path;
    std::string hash;  // SHA-256 of the file
    int32_t code = 0;  // of its run
};

// How two builds compare, for people and for programs.
struct AgainstReport {
    const RunOptions* options = nullptr;
    const FolderRun* input = nullptr;
    const SectionPlan* plan = nullptr;
    ComparedBuild own;
    ComparedBuild other;
    std::vector<PointDifference> points;  // none if the codes differ

    bool IsSame() const;
};

// A table of the points and the verdict.
std::string FormatAgainst(const AgainstReport& report);

// The same for programs, as docs/tool-json.md tells.
nlohmann::ordered_json AgainstToJson(const AgainstReport& report);

}  // namespace vastrelline
