// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "DigestRun.h"
#include "MachineState.h"

namespace vastrelline::digest {

// One thing that a run gave: a code, a frame, a file.
struct ResultPart {
    std::string name;
    std::string bytes;
    bool isText = false;
};

using RunResult = std::vector<ResultPart>;

// Makes the call and gathers everything that came of it. May be called from several threads at once.
//
// base     an existing folder, for the run's files
// habits   the state of the thread during the call
RunResult Perform(const DigestRun& run, const std::filesystem::path& base, const HostHabits& habits);

// The hash of a result.
std::string HashOf(const RunResult& result);

}  // namespace vastrelline::digest
