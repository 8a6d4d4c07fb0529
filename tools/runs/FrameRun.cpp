// SPDX-License-Identifier: Apache-2.0
#include "runs/FrameRun.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace vastrelline {
namespace {

// What the library says on standard error where it shows a message box on Windows.
constexpr std::string_view kCornerMessage = "Wrong parameters of round-corner mask";

Finding CornerFinding(const std::string& path) {
    return {
        Severity::Warning,
        path,
        0,
        1,
        "the sensor's corner sizes (RCCutOff, RCCutOffR in section Settings) do not fit its frame size, so "
        "the "
        "corners were looked for in the frame; give the sensor's true sizes there or by --geometry, or set "
        "INTRAORAL_MASK=0 for a sensor without corners",
        "corner-sizes"};
}

std::vector<Finding> ExplainMessages(const std::string& said, const std::string& path) {
    std::vector<Finding> findings;
    bool hasCorners = false;
    std::string_view rest = said;
    while (!rest.empty()) {
        const size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.empty()) continue;
        if (line != kCornerMessage)
            findings.push_back({Severity::Note, path, 0, 1, "the library says: " + std::string(line), ""});
        else if (!std::exchange(hasCorners, true))
            findings.push_back(CornerFinding(path));
    }
    return findings;
}

// The edits that every private copy needs: the log is how the tool knows what ran, and a message box would
// wait for somebody to close it.
std::vector<KeyEdit> WithStandingEdits(std::vector<KeyEdit> edits) {
    edits.push_back({"SAVE_LOG", "1"});
    edits.push_back({"MSGBOX_ENABLE", "0"});
    return edits;
}

void Finish(FrameRun& run, const SectionPlan& plan, const std::string& path) {
    run.log = ReadLastRun(run.logBytes);
    const bool isLow = run.call.record.dose && run.call.record.dose->isLow;
    run.stages = ListRanStages(plan, isLow, run.log);
    run.findings = ExplainMessages(run.call.record.said, path);
}

}  // namespace

std::vector<KeyEdit> DumpInto(const std::string& folder) {
    return {{"SAVE_IMAGE", "1"}, {"WRITE_PATH", folder + "/"}, {"SAVE_BACKUP", "0"}};
}

std::vector<KeyEdit> WithoutDumps() { return {{"SAVE_IMAGE", "0"}, {"SAVE_BACKUP", "0"}}; }

FrameRun RunFrame(const ProfileFile& file, const SectionPlan& plan, ProfileUse use,
                  const std::vector<KeyEdit>& edits, ExportRequest call, const ExportCaller& callExport) {
    FrameRun run;
    run.call = std::move(call);
    run.call.section = plan.section;
    run.call.output.assign(run.call.frame.pixels.size(), 0);
    if (use == ProfileUse::InPlace) {
        const std::string before = ReadLogBeside(file.Path());
        run.call.profile = file.Path();
        run.code = callExport(run.call);
        // A log that stays as it was is that of an older run.
        std::string after = ReadLogBeside(file.Path());
        if (after != before) run.logBytes = std::move(after);
    } else {
        const PrivateProfile copy(file, plan.section, WithStandingEdits(edits));
        run.call.profile = copy.Path();
        run.code = callExport(run.call);
        run.logBytes = copy.ReadLog();
    }
    Finish(run, plan, file.Path());
    return run;
}

}  // namespace vastrelline
