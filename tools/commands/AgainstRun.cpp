// SPDX-License-Identifier: Apache-2.0
#include "commands/AgainstRun.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>
#include <vector>

#include "commands/AgainstReport.h"
#include "commands/FolderRun.h"
#include "commands/JsonObject.h"
#include "commands/RunPicture.h"
#include "commands/RunPreparation.h"
#include "commands/RunProvenance.h"
#include "files/PrivateFolder.h"
#include "files/Sha256.h"
#include "formats/BmpFormat.h"
#include "library/LibraryFile.h"
#include "messages/ToolError.h"
#include "platform/PathText.h"
#include "runs/FrameRun.h"

namespace vastrelline {
namespace {

constexpr int32_t kSuccess = 0;

// A run of one build with the frame at all points.
struct BuildRun {
    FrameRun run;
    std::vector<StagePoint> points;  // point into the run
};

StagePoint BitmapPoint(const std::string& path, const ExportTraits& traits) {
    Frame bitmap = DecodeBmp(ReadBitmap(path, traits));
    return {PointKind::Result, "bitmap", nullptr, {}, std::move(bitmap), {}, {}};
}

// library   empty: the tool's own
BuildRun RunBuild(const FolderRun& input, const SectionPlan& plan, ExportRequest call,
                  const std::string& library, const ExportCaller& callExport) {
    const Frame& frame = input.frame.frame;
    const PrivateFolder bitmaps;
    const PrivateFolder dumps;
    const std::string folder = dumps.Path().string();
    call.library = library;
    if (input.traits.takesBitmapPath) call.bitmapPath = bitmaps.Inside("picture.bmp");
    BuildRun build{
        RunFrame(input.profile, plan, ProfileUse::PrivateCopy, DumpInto(folder), std::move(call), callExport),
        {}};
    if (build.run.code != kSuccess) return build;
    const std::optional<Frame> result =
        input.traits.takesBitmapPath ? std::nullopt
                                     : std::optional(Frame{frame.width, frame.height, build.run.call.output});
    std::vector<StageFrame> frames =
        RequireStageFrames(folder, {frame.width, frame.height}, build.run.stages);
    build.points = ListStagePoints(frame, result, std::move(frames), build.run.stages);
    if (input.traits.takesBitmapPath)
        build.points.push_back(BitmapPoint(build.run.call.bitmapPath, input.traits));
    return build;
}

// What goes wrong in the other build is told at its file.
BuildRun RunOther(const FolderRun& input, const SectionPlan& plan, const ExportRequest& call,
                  const std::string& library, const ExportCaller& callExport) {
    try {
        return RunBuild(input, plan, call, library, callExport);
    } catch (const CancelledError&) {
        throw;
    } catch (const ToolError& error) {
        if (!error.Where().empty()) throw;
        throw ToolError(error.Code(), library, error.What());
    }
}

}  // namespace

ExitCode RunAgainst(const RunOptions& options, CommandContext& context) {
    // The loader takes a name without a separator for one to be looked for in its own folders.
    const std::string library = std::filesystem::absolute(PathOf(options.against)).string();
    AgainstReport report;
    report.other = {options.against, Sha256OfFile(options.against), kSuccess};
    report.own = {LibraryFile(), LibraryHash(), kSuccess};
    const FolderRun input = PrepareFolderRun(options, context);
    const SectionPlan plan = MakeSectionPlan(input.profile, options.section, input.traits.kind);
    report.options = &options;
    report.input = &input;
    report.plan = &plan;
    ExportRequest call = MakeCall(options, input.traits, input.frame.frame);
    Progress progress = context.messages.Follow("running", 0);
    call.onWait = [&progress] { progress.Update(0, 0); };
    // The other one first: it is the one that may be no library at all.
    const BuildRun other = RunOther(input, plan, call, library, context.callExport);
    const BuildRun own = RunBuild(input, plan, std::move(call), {}, context.callExport);
    progress.Finish();
    report.own.code = own.run.code;
    report.other.code = other.run.code;
    if (own.run.code == other.run.code) {
        TestCode(own.run, input.traits);  // the same failure compares nothing
        report.points = ComparePoints(own.points, other.points);
    }
    const ExitCode code = report.IsSame() ? ExitCode::Well : ExitCode::Findings;
    if (context.wantsJson)
        PrintObject(context, code, AgainstToJson(report));
    else
        context.report << FormatAgainst(report);
    return code;
}

}  // namespace vastrelline
