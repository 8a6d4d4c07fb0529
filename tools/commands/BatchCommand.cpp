// SPDX-License-Identifier: Apache-2.0
#include "commands/BatchCommand.h"

#include <filesystem>
#include <iterator>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "batch/BatchManifest.h"
#include "batch/Crew.h"
#include "batch/FrameList.h"
#include "batch/LeftDrafts.h"
#include "commands/BatchFrame.h"
#include "commands/BatchReport.h"
#include "commands/RunPreparation.h"
#include "commands/RunProvenance.h"
#include "files/Sha256.h"
#include "messages/ToolError.h"
#include "platform/Cancellation.h"
#include "platform/PathText.h"
#include "runs/LookAtProfile.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

BatchManifest::Opening OpeningOf(const BatchOptions& options) {
    if (options.isResumed) return BatchManifest::Opening::Resume;
    return options.run.mayReplace ? BatchManifest::Opening::Anew : BatchManifest::Opening::New;
}

// The sensor's own profile counts for results as the other one does.
std::string SensorText(const SectionPlan& plan, const BatchOptions& options) {
    const std::string hash = SensorHashOf(plan, options.run.sensorFolder);
    return hash.empty() ? hash : ", sensor's profile " + hash;
}

// Before the work: names that are taken by somebody else's files.
void TestNames(const BatchOptions& options, const std::vector<ListedFrame>& frames,
               const BatchManifest& manifest) {
    for (const ListedFrame& frame : frames) {
        const std::string path = (PathOf(options.folder) / PathOf(frame.result)).make_preferred().string();
        std::error_code error;
        if (fs::equivalent(PathOf(path), PathOf(options.run.profile), error) && !error)
            throw UsageError("the result of " + frame.path + " would replace the profile");
        // By way of a link in the folder of the results.
        if (fs::equivalent(PathOf(path), PathOf(frame.path), error) && !error)
            throw UsageError("the result of " + frame.path + " would replace a frame: " + path,
                             "name another folder in --out");
        if (!options.run.mayReplace && !manifest.IsOwn(frame.result) && fs::exists(PathOf(path), error))
            throw OutputError(path, "exists already", "--force replaces it");
    }
}

}  // namespace

std::string_view BatchCommand::Examples() const {
    return "  vastrelline batch scans --profile dental.ini --section General --out results\n"
           "  vastrelline batch scans --profile dental.ini --section General --out results --resume\n"
           "  vastrelline batch 'scans/*.raw' --profile dental.ini --section LowDose --out results \\\n"
           "      --format tif --jobs 4 --timeout 30 --keep-going --json\n";
}

std::string_view BatchCommand::Notes() const {
    return "Every frame runs in a process of its own. The folder of the results has a manifest, "
           "batch-manifest.jsonl:\n"
           "by it --resume knows what is done, whatever ended the batch before. The exit code is the highest "
           "of\n"
           "those of the frames that failed. With --json each frame is a line, and the last line is a "
           "summary.\n";
}

void BatchCommand::AddOptions(CLI::App& command) { AddBatchOptions(command, options_); }

ExitCode BatchCommand::Execute(CommandContext& context) {
    options_.run.picture = "picture." + options_.format;
    TestBatchOptions(options_);
    if (const ExportTraits* const named = FindNamedTraits(options_.run)) TestRunExport(options_.run, *named);

    const ProfileFile profile = ReadRunProfile(options_.run);
    std::vector<Finding> findings;
    TestMeaning(profile, options_.run, findings);
    const ExportTraits& traits = FindTraits(profile, options_.run);
    TestRunExport(options_.run, traits);
    const SectionPlan plan = MakeSectionPlan(profile, options_.run.section, traits.kind);
    std::vector<Finding> more = LookAtProfile(profile, plan, traits);
    std::move(more.begin(), more.end(), std::back_inserter(findings));

    const std::vector<ListedFrame> frames = ListFrames(options_.inputs, options_.folder, options_.format);
    BatchManifest manifest(options_.folder, OpeningOf(options_),
                           {Sha256Of(std::string(profile.Text().Bytes())), plan.section, LibraryHash(),
                            DescribeResultOptions(options_, traits) + SensorText(plan, options_)});
    TestNames(options_, frames, manifest);
    RemoveLeftDrafts(options_.folder);
    for (const Finding& finding : findings) context.messages.Show(finding);

    const BatchPlan batch{options_, profile, plan, traits, manifest, context.callExport};
    BatchReport report(context, frames.size(), std::move(findings));
    ShareOut(options_.jobs, frames.size(), [&](size_t part) {
        if (IsCancelled()) return false;
        try {
            report.Take(DoBatchFrame(batch, frames[part], [&report] { report.Wait(); }));
        } catch (const CancelledError&) {
            return false;
        }
        return !report.IsUnread() && (options_.keepsGoing || !report.HasFailure());
    });
    return report.Finish(batch, IsCancelled());
}

}  // namespace vastrelline
