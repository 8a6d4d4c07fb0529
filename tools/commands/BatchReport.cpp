// SPDX-License-Identifier: Apache-2.0
#include "commands/BatchReport.h"

#include <algorithm>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string_view>
#include <utility>

#include "commands/JsonObject.h"
#include "commands/RunPicture.h"
#include "messages/ErrorJson.h"
#include "messages/FindingJson.h"
#include "profile/TopLevel.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kMostShown = 1000;  // failures in the table; the lines for programs have all

std::string_view StateName(FrameState state) {
    switch (state) {
        case FrameState::Done:
            return "done";
        case FrameState::Before:
            return "before";
        case FrameState::Failed:
            break;
    }
    return "failed";
}

std::string_view CodeName(ExitCode code) {
    switch (code) {
        case ExitCode::WrongUse:
            return "use";
        case ExitCode::Input:
            return "input";
        case ExitCode::Output:
            return "output";
        default:
            return "processing";
    }
}

Json ToJson(const FrameOutcome& outcome) {
    const bool isThere = outcome.state != FrameState::Failed;
    const bool isRead = outcome.size.width > 0;
    return {{"type", "frame"},
            {"frame", outcome.frame->path},
            {"state", StateName(outcome.state)},
            {"exit", static_cast<int>(outcome.error ? outcome.error->Code() : ExitCode::Well)},
            {"result", isThere ? Json(outcome.resultPath) : Json(nullptr)},
            {"resultSha256", isThere ? Json(outcome.resultHash) : Json(nullptr)},
            {"width", isRead ? Json(outcome.size.width) : Json(nullptr)},
            {"height", isRead ? Json(outcome.size.height) : Json(nullptr)},
            {"elapsedMs", outcome.state == FrameState::Done ? Json(outcome.elapsedMs) : Json(nullptr)},
            {"findings", FindingsJson(outcome.findings)},
            {"error", ErrorJson(outcome.error)}};
}

// What is wrong, without the path that stands before it already.
std::string WithoutPath(const std::string& path, const ToolError& error) {
    const std::string text = error.what();
    const std::string head = path + ": ";
    return text.starts_with(head) ? text.substr(head.size()) : text;
}

double SecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

BatchReport::BatchReport(CommandContext& context, size_t total, std::vector<Finding> findings)
    : context_(context),
      total_(total),
      profileFindings_(std::move(findings)),
      start_(std::chrono::steady_clock::now()),
      progress_(context.messages.Follow("frames", total)) {}

void BatchReport::Wait() {
    const std::lock_guard lock(mutex_);
    progress_.Update(total_ - Left(), Count(FrameState::Failed), Count(FrameState::Before));
}

void BatchReport::Take(const FrameOutcome& outcome) {
    const std::lock_guard lock(mutex_);
    ++counts_[static_cast<size_t>(outcome.state)];
    Remember(outcome);
    if (context_.wantsJson) PrintLine(context_.report, ToJson(outcome));
    progress_.Update(total_ - Left(), Count(FrameState::Failed), Count(FrameState::Before));
}

void BatchReport::Remember(const FrameOutcome& outcome) {
    for (const Finding& finding : outcome.findings) {
        if (finding.severity == Severity::Note) continue;
        const auto [place, isNew] = found_.try_emplace(finding.rule, FoundOften{finding, 0});
        ++place->second.frames;
    }
    if (!outcome.error) return;
    code_ = std::max(code_, outcome.error->Code());
    if (failed_.size() < kMostShown)
        failed_.push_back(
            {outcome.frame->path, outcome.error->Code(), WithoutPath(outcome.frame->path, *outcome.error)});
}

bool BatchReport::HasFailure() {
    const std::lock_guard lock(mutex_);
    return Count(FrameState::Failed) > 0;
}

bool BatchReport::IsUnread() {
    const std::lock_guard lock(mutex_);
    return !context_.report;
}

size_t BatchReport::Left() const {
    size_t left = total_;
    for (const size_t count : counts_) left -= count;
    return left;
}

void BatchReport::ShowFindings() {
    for (const auto& [rule, often] : found_) {
        Finding finding = often.first;
        if (often.frames > 1) finding.text += " (and " + std::to_string(often.frames - 1) + " more)";
        context_.messages.Show(finding);
    }
}

void BatchReport::ShowFailures() {
    if (failed_.empty()) return;
    size_t width = 0;
    for (const FailedFrame& frame : failed_) width = std::max(width, frame.path.size());
    width = std::min<size_t>(width, 40);
    constexpr int kCodeWidth = 10;
    std::ostringstream table;
    table << Count(FrameState::Failed) << " of " << total_ << " frames failed:\n";
    for (const FailedFrame& frame : failed_)
        table << "  " << std::left << std::setw(static_cast<int>(width)) << OneLine(frame.path) << "  "
              << std::setw(kCodeWidth) << CodeName(frame.code) << "  " << OneLine(frame.what) << '\n';
    if (const size_t hidden = Count(FrameState::Failed) - failed_.size(); hidden > 0)
        table << "  and " << hidden << " more\n";
    context_.messages.Explain(table.str());
}

void BatchReport::PrintSummary(const BatchPlan& plan) const {
    const std::string kind =
        plan.traits.takesBitmapPath
            ? "bitmaps of 8 bits"
            : plan.options.format + ", " +
                  DescribeStyle(MakeStyle(plan.options.run, ReadTopLevel(plan.profile, plan.plan.section)));
    const double seconds = SecondsSince(start_);
    std::ostringstream text;
    text << "profile  " << plan.profile.Path() << ", section '" << plan.plan.section << "'\n"
         << "export   " << plan.traits.name << ": " << ChainName(plan.plan.chain) << '\n'
         << "frames   " << total_ << ": " << Count(FrameState::Done) << " done";
    if (Count(FrameState::Before) > 0) text << ", " << Count(FrameState::Before) << " done before";
    if (Count(FrameState::Failed) > 0) text << ", " << Count(FrameState::Failed) << " failed";
    if (Left() > 0) text << ", " << Left() << " left; --resume does them";
    text << '\n'
         << "time     " << std::fixed << std::setprecision(1) << seconds << " s, "
         << static_cast<double>(total_ - Left() - Count(FrameState::Before)) / std::max(seconds, 1e-3)
         << " frames a second\n"
         << "results  " << plan.options.folder << " (" << kind << ")\n"
         << "manifest " << plan.manifest.Path() << '\n';
    context_.report << text.str();
}

void BatchReport::PrintJsonSummary(const BatchPlan& plan, ExitCode code) const {
    PrintObjectLine(context_, code,
                    {{"type", "summary"},
                     {"profile", plan.profile.Path()},
                     {"section", plan.plan.section},
                     {"export", plan.traits.name},
                     {"chain", ChainName(plan.plan.chain)},
                     {"frames", total_},
                     {"done", Count(FrameState::Done)},
                     {"before", Count(FrameState::Before)},
                     {"failed", Count(FrameState::Failed)},
                     {"left", Left()},
                     {"seconds", SecondsSince(start_)},
                     {"results", plan.options.folder},
                     {"manifest", plan.manifest.Path()},
                     {"findings", FindingsJson(profileFindings_)}});
}

ExitCode BatchReport::Finish(const BatchPlan& plan, bool isCancelled) {
    progress_.Finish();
    const ExitCode code = isCancelled ? ExitCode::Cancelled : code_;
    ShowFindings();
    ShowFailures();
    if (isCancelled) context_.messages.Fail(std::string("vastrelline: ") + CancelledError().what());
    if (context_.wantsJson)
        PrintJsonSummary(plan, code);
    else
        PrintSummary(plan);
    return code;
}

}  // namespace vastrelline
