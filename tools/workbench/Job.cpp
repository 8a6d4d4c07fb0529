// SPDX-License-Identifier: Apache-2.0
#include "workbench/Job.h"

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "messages/ErrorJson.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

std::string_view StateName(JobState state) {
    switch (state) {
        case JobState::Running:
            return "running";
        case JobState::Done:
            return "done";
        case JobState::Failed:
            return "failed";
        case JobState::Cancelled:
            return "cancelled";
    }
    return {};
}

}  // namespace

Json JobToJson(const Job& job) {
    return {{"id", job.id},
            {"kind", job.kind == JobKind::Sheet ? "sheet" : "compare"},
            {"done", job.done},
            {"total", job.total},
            {"state", StateName(job.state)},
            {"error", ErrorJson(job.error)}};
}

void PublishJob(EventChannel& events, const Job& job) {
    events.Publish("job " + std::to_string(job.id),
                   Json({{"type", "job"}, {"job", JobToJson(job)}})
                       .dump(-1, ' ', false, Json::error_handler_t::replace));
}

}  // namespace vastrelline
