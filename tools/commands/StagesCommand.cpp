// SPDX-License-Identifier: Apache-2.0
#include "commands/StagesCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

#include "commands/FolderRun.h"
#include "commands/JsonObject.h"
#include "commands/RunHead.h"
#include "commands/RunPicture.h"
#include "commands/RunPreparation.h"
#include "commands/RunProvenance.h"
#include "commands/SectionChoice.h"
#include "commands/StagePictures.h"
#include "commands/StagesReport.h"
#include "files/OutputFolder.h"
#include "files/PrivateFolder.h"
#include "formats/BmpFormat.h"
#include "messages/ToolError.h"
#include "platform/Cancellation.h"
#include "profile/TopLevel.h"
#include "runs/LookAtFrame.h"
#include "runs/StageCurves.h"

namespace vastrelline {
namespace {

constexpr int32_t kPyramidStage = 6;
constexpr const char* kIndexLeaf = "stages.json";

// Frames, curves and bands of a run with dumps, beside one without.
class DumpedRun {
public:
    DumpedRun(const FolderRun& input, const SectionPlan& plan, const FrameRun& first, ExportRequest call,
              const ExportCaller& callExport) {
        if (input.traits.takesBitmapPath) call.bitmapPath = bitmaps_.Inside("dumped.bmp");
        run_ = RunFrame(input.profile, plan, ProfileUse::PrivateCopy, DumpInto(Folder()), std::move(call),
                        callExport);
        TestCode(run_, input.traits);
        // A dump never changes a pixel: pictures of another run than the one that was timed would lie.
        if (run_.call.output != first.call.output)
            throw ProcessingError({}, "two runs on the frame gave different results");
        frames_ = RequireStageFrames(Folder(), {run_.call.frame.width, run_.call.frame.height}, first.stages);
    }

    std::vector<ShownPoint> ShowPoints(const FolderRun& input, const FrameRun& first) {
        const std::optional<Frame> result =
            input.traits.takesBitmapPath
                ? std::nullopt
                : std::optional(Frame{input.frame.frame.width, input.frame.frame.height, first.call.output});
        std::vector<ShownPoint> shown;
        std::vector<StageFrame> steps = frames_;
        std::vector<StagePoint> points =
            ListStagePoints(input.frame.frame, result, std::move(frames_), first.stages);
        for (StagePoint& point : points) shown.push_back({std::move(point), {}, {}});
        for (const StageFrame& step : steps) AddCurve(step, first, shown);
        AddBands(shown);
        return shown;
    }

private:
    std::string Folder() const { return dumps_.Path().string(); }

    void AddCurve(const StageFrame& step, const FrameRun& first, std::vector<ShownPoint>& shown) const {
        if (step.kind != StageFrameKind::AfterStage) return;
        const auto own = std::find_if(shown.begin(), shown.end(), [&](const ShownPoint& each) {
            return each.point.stage == &first.stages[step.stage];
        });
        if (own != shown.end())
            own->curve = FindStageCurve(Folder(), first.stages, step).value_or(std::vector<CurvePoint>());
    }

    // The bands that are there are those of the last pyramid.
    void AddBands(std::vector<ShownPoint>& shown) const {
        const auto last = std::find_if(shown.rbegin(), shown.rend(), [](const ShownPoint& each) {
            return each.point.stage != nullptr && each.point.stage->place->stageNumber == kPyramidStage;
        });
        if (last != shown.rend()) last->bands = ReadStageBands(Folder());
    }

    PrivateFolder bitmaps_;
    PrivateFolder dumps_;
    FrameRun run_;
    std::vector<StageFrame> frames_;
};

std::string JsonText(const CommandContext& context, const nlohmann::ordered_json& fields) {
    std::ostringstream text;
    PrintObject(text, context.command, ExitCode::Well, fields);
    return text.str();
}

}  // namespace

std::string_view StagesCommand::Examples() const {
    return "  vastrelline stages tooth_1300x1668.raw --profile dental.ini --section General --out stages\n"
           "  vastrelline stages tooth.png --profile dental.ini --section LowDose --out stages --json\n"
           "  vastrelline stages tooth.png --profile fixed.ini --section Cr --out stages \\\n"
           "      --export ImageProcessingCR --force\n";
}

std::string_view StagesCommand::Notes() const {
    return "The folder holds a picture of the frame at each point of the run, the bands of the pyramid as "
           "grey\n"
           "around the middle, curves over the histogram of the frame before as SVG, contact.png with all "
           "of\n"
           "them, stages.txt with the table, and stages.json with everything as docs/tool-json.md tells. "
           "The\n"
           "times come from a run without dumps.\n";
}

void StagesCommand::AddOptions(CLI::App& command) { AddFolderRunOptions(command, options_, folder_); }

ExitCode StagesCommand::Execute(CommandContext& context) {
    const std::optional<GreyWindow> window = TestFolderRunOptions(options_);
    // Before the work, so that a name that is taken costs no time.
    OutputFolder folder(folder_, kIndexLeaf, options_.mayReplace);
    const FolderRun input = PrepareFolderRun(options_, context);
    const SectionPlan plan = MakeSectionPlan(input.profile, options_.section, input.traits.kind);
    ExportRequest call = MakeCall(options_, input.traits, input.frame.frame);
    Progress progress = context.messages.Follow("running", 0);
    call.onWait = [&progress] { progress.Update(0, 0); };

    const PrivateFolder bitmaps;
    ExportRequest timed = call;
    if (input.traits.takesBitmapPath) timed.bitmapPath = bitmaps.Inside("picture.bmp");
    const FrameRun run = RunFrame(input.profile, plan, ProfileUse::PrivateCopy, WithoutDumps(),
                                  std::move(timed), context.callExport);
    TestCode(run, input.traits);
    DumpedRun dumped(input, plan, run, std::move(call), context.callExport);
    const std::vector<ShownPoint> points = dumped.ShowPoints(input, run);
    const std::vector<EffectivePlace> places = ReadEffectiveValues(input.profile, plan);
    const StagePictures pictures =
        DrawStagePictures(RunTitle(options_), points, window, ReadTopLevel(input.profile, plan.section));
    progress.Finish();

    std::vector<Finding> after = run.findings;
    if (!input.traits.takesBitmapPath)
        for (Finding& finding : LookAtResult(folder.Path(), run.call.output))
            after.push_back(std::move(finding));
    for (const Finding& finding : after) context.messages.Show(finding);
    StagesReport report{options_.frame, &input.frame,  &input.profile, &plan,
                        &places,        &input.traits, &run,           &points,
                        &pictures,      folder.Path(), input.findings};
    std::move(after.begin(), after.end(), std::back_inserter(report.findings));
    const Frame result = input.traits.takesBitmapPath
                             ? Frame(DecodeBmp(ReadBitmap(run.call.bitmapPath, input.traits)))
                             : Frame{input.frame.frame.width, input.frame.frame.height, run.call.output};
    const RunRecord record =
        MakeRunRecord({options_, input.profile, plan, input.traits}, input.frame.frame, result, std::nullopt);
    nlohmann::ordered_json json = StagesToJson(report);
    json["record"] = RecordToJson(RecordInFile(record, folder.Path() + "/" + kIndexLeaf));
    for (const FolderFile& file : pictures.files) {
        if (IsCancelled()) throw CancelledError();
        folder.Write(file.leaf, file.bytes);
    }
    constexpr size_t kTableWidth = 110;
    folder.Write("stages.txt", FormatStages(report, kTableWidth));
    folder.Write(kIndexLeaf, JsonText(context, json));
    if (IsCancelled()) throw CancelledError();
    folder.Publish();
    if (context.wantsJson)
        PrintObject(context, ExitCode::Well, json);
    else
        context.report << FormatStages(report, TerminalWidth()) << "\nfolder   " << folder.Path() << '\n';
    return ExitCode::Well;
}

}  // namespace vastrelline
