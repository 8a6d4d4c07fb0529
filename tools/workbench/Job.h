// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>

#include "messages/ToolError.h"
#include "server/EventChannel.h"

namespace vastrelline {

// Work beside the desk's own runs, which takes its time.
enum class JobKind : uint8_t { Sheet, Compare };
enum class JobState : uint8_t { Running, Done, Failed, Cancelled };

struct Job {
    uint64_t id = 0;
    JobKind kind = JobKind::Sheet;
    size_t done = 0;  // of the parts that it has
    size_t total = 0;
    JobState state = JobState::Running;
    std::optional<ToolError> error;  // Failed
};

nlohmann::ordered_json JobToJson(const Job& job);

// Tells the pages how far it is.
void PublishJob(EventChannel& events, const Job& job);

}  // namespace vastrelline
