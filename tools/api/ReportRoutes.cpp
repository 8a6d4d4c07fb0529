// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "api/ApiRoutes.h"
#include "files/Sha256.h"
#include "library/LibraryFile.h"
#include "lint/LintRules.h"
#include "messages/ToolError.h"
#include "messages/UtcTime.h"
#include "profile/EffectiveValues.h"
#include "profile/ProfileFile.h"
#include "profile/TextMerge.h"
#include "reports/WorkbenchReport.h"
#include "workbench/DeskEdits.h"

namespace vastrelline {
namespace {

constexpr size_t kMostRuns = 100;

// "14,9", the oldest first; without a wish side A, where there is one, and the newest.
std::vector<uint64_t> WantedRuns(const ApiCall& call) {
    std::vector<uint64_t> runs;
    const std::string text = call.Field("runs");
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view word = rest.substr(0, rest.find(','));
        rest.remove_prefix(std::min(word.size() + 1, rest.size()));
        uint64_t run = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), run);
        if (error != std::errc() || end != word.data() + word.size())
            throw UsageError("field 'runs' should be numbers with commas between them", {});
        runs.push_back(run);
    }
    if (runs.empty()) {
        runs.push_back(call.bench.FindRun("latest")->id);
        if (const std::optional<uint64_t> a = call.bench.PinnedA()) runs.push_back(*a);
    }
    std::sort(runs.begin(), runs.end());
    runs.erase(std::unique(runs.begin(), runs.end()), runs.end());
    if (runs.size() > kMostRuns)
        throw UsageError("a report has at most " + std::to_string(kMostRuns) + " runs", {});
    return runs;
}

struct RunAndDesk {
    ReportedRun run;
    DeskState desk;
};

std::shared_ptr<const Frame> FrameOf(const std::shared_ptr<const KeptRun>& run, std::string_view name) {
    const std::shared_ptr<const KeptPoint> point = FindPoint(*run, name);
    if (point == nullptr || !point->point.frame) return nullptr;
    return {point, &*point->point.frame};
}

RunAndDesk Describe(const ApiCall& call, uint64_t id) {
    const RunRecord record = call.bench.FindRecord(id);
    const HistoryRow& row = record.row;
    RunAndDesk described{{}, row.desk};
    ReportedRun& run = described.run;
    run.number = id;
    run.name = row.name;
    run.when = row.when;
    run.frameName = row.lostFrame.empty() ? call.bench.Frames().NameOf(row.desk.frame) : row.lostFrame;
    run.section = row.desk.section;
    run.change = row.change;
    run.resultHash = row.hash;
    run.profileText = EditorText(row.desk.bytes);
    run.profileHash = Sha256Of(row.desk.bytes);
    run.offKeys.assign(row.desk.offKeys.begin(), row.desk.offKeys.end());
    run.elapsedMs = row.elapsedMs;
    run.stages = row.stages;
    run.picture = row.picture;
    if (record.kept == nullptr) return described;
    run.read = FrameOf(record.kept, "frame");
    run.result = FrameOf(record.kept, "result");
    return described;
}

// The values as a run reads them: what is off is not there.
std::vector<PlaceDifference> DiffDesks(const ApiCall& call, const DeskState& before, const DeskState& after) {
    const auto fileOf = [&](const DeskState& desk) {
        return ProfileFile(call.bench.ProfilePath(),
                           SwitchOff(call.bench.ProfilePath(), desk.bytes, desk.section, desk.offKeys));
    };
    const ProfileFile first = fileOf(before);
    const ProfileFile last = fileOf(after);
    return DiffPlaces(ReadEffectiveValues(first, call.bench.PlanOf(first, before.section)),
                      ReadEffectiveValues(last, call.bench.PlanOf(last, after.section)));
}

std::string HashOfLibrary() {
    try {
        return Sha256OfFile(LibraryFile());
    } catch (const ToolError&) {
        return {};  // the report is worth more than that line
    }
}

HttpAnswer GetReport(const ApiCall& call) {
    std::vector<RunAndDesk> described;
    for (const uint64_t id : WantedRuns(call)) described.push_back(Describe(call, id));
    const std::string& path = call.bench.ProfilePath();
    const DeskCopy desk = call.bench.CopyDesk();
    WorkbenchReport report;
    report.profileName = path.substr(path.find_last_of("/\\") + 1);
    report.savedText = EditorText(desk.fileBytes);
    const DeskState& last = described.back().desk;
    DeskState before = described.front().desk;
    if (described.size() == 1) {
        before.bytes = desk.fileBytes;
        before.offKeys.clear();
    }
    report.keys = DiffDesks(call, before, last);
    const ProfileFile file(path, last.bytes);
    for (LintFinding& each : LintProfile(file, file.FindSection(last.section) == nullptr ? "" : last.section))
        report.findings.push_back(std::move(each.finding));
    report.version = VASTRELLINE_VERSION;
    report.libraryHash = HashOfLibrary();
    report.made = UtcMinute();
    std::string name = "report";
    for (RunAndDesk& each : described) report.runs.push_back(std::move(each.run));
    name.append("-").append(std::to_string(report.runs.front().number));
    if (report.runs.size() > 1) name.append("-").append(std::to_string(report.runs.back().number));
    const std::vector<uint8_t> bytes = MakeWorkbenchReport(report);
    return {200, "text/html; charset=utf-8", {bytes.begin(), bytes.end()}, name + ".html"};
}

constexpr ApiRoute kRoutes[] = {{"GET", "api/report", GetReport}};

}  // namespace

std::span<const ApiRoute> ReportRoutes() { return kRoutes; }

}  // namespace vastrelline
