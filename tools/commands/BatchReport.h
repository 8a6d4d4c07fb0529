// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "commands/BatchFrame.h"
#include "commands/Command.h"
#include "messages/ExitCode.h"
#include "messages/Progress.h"

namespace vastrelline {

// Tells of a batch while it runs (progress; with --json a line a frame) and at its end. What threads call may
// be called by several at a time. It keeps what the end needs: its size does not grow with the frames that
// went well.
class BatchReport {
public:
    // total      of the frames
    // findings   about the profile, which were shown before
    BatchReport(CommandContext& context, size_t total, std::vector<Finding> findings);

    // Threads: time has passed.
    void Wait();

    // Threads: a frame is done or has failed.
    void Take(const FrameOutcome& outcome);

    // Whether a frame has failed, or nobody reads the report any more.
    bool HasFailure();
    bool IsUnread();

    // Ends the progress, shows what was found and what failed, prints the summary. Returns how the tool ends:
    // the highest code among those of the failures; cancelled, whatever failed, if it was.
    ExitCode Finish(const BatchPlan& plan, bool isCancelled);

private:
    struct FailedFrame {
        std::string path;
        ExitCode code;
        std::string what;
    };
    struct FoundOften {
        Finding first;
        size_t frames = 0;
    };

    void Remember(const FrameOutcome& outcome);
    void ShowFindings();
    void ShowFailures();
    void PrintSummary(const BatchPlan& plan) const;
    void PrintJsonSummary(const BatchPlan& plan, ExitCode code) const;
    size_t Count(FrameState state) const { return counts_[static_cast<size_t>(state)]; }
    size_t Left() const;

    CommandContext& context_;
    size_t total_;
    std::vector<Finding> profileFindings_;
    std::chrono::steady_clock::time_point start_;
    std::mutex mutex_;
    Progress progress_;
    std::array<size_t, 3> counts_{};  // by state
    std::vector<FailedFrame> failed_;
    std::map<std::string, FoundOften> found_;  // by rule
    ExitCode code_ = ExitCode::Well;
};

}  // namespace vastrelline
