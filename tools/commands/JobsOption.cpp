// SPDX-License-Identifier: Apache-2.0
#include "commands/JobsOption.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <thread>

#include "messages/ToolError.h"

namespace vastrelline {
namespace {

constexpr size_t kMostJobs = 256;

}  // namespace

void AddJobsOption(CLI::App& command, const std::string& what, size_t& jobs) {
    jobs = std::clamp<size_t>(std::thread::hardware_concurrency(), 1, kMostJobs);
    command.add_option("--jobs", jobs, what)->type_name("NUMBER");
}

void TestJobs(size_t jobs) {
    if (jobs < 1 || jobs > kMostJobs)
        throw UsageError("--jobs should be a number from 1 to " + std::to_string(kMostJobs));
}

}  // namespace vastrelline
