// SPDX-License-Identifier: Apache-2.0
#include "workbench/KeptRun.h"

#include <charconv>
#include <cstddef>

namespace vastrelline {

std::string_view RunStateName(RunState state) {
    switch (state) {
        case RunState::Running:
            return "running";
        case RunState::Picture:
            return "picture";
        case RunState::Complete:
            return "complete";
        case RunState::Failed:
            return "failed";
        case RunState::Ended:
            return "ended";
    }
    return {};
}

std::shared_ptr<const KeptPoint> FindPoint(const KeptRun& run, std::string_view name) {
    if (run.points.empty()) return nullptr;
    if (name == "frame") return run.points.front();
    if (name == "result") return run.points.back();
    size_t index = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), index);
    if (error != std::errc() || end != name.data() + name.size() || index >= run.points.size())
        return nullptr;
    return run.points[index];
}

}  // namespace vastrelline
