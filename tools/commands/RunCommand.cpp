// SPDX-License-Identifier: Apache-2.0
#include "commands/RunCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "commands/AgainstRun.h"
#include "commands/JsonObject.h"
#include "commands/RunPicture.h"
#include "commands/RunPreparation.h"
#include "commands/RunProvenance.h"
#include "commands/RunReport.h"
#include "commands/StripRun.h"
#include "files/FileKind.h"
#include "files/OutputFile.h"
#include "files/PrivateFolder.h"
#include "formats/BmpFormat.h"
#include "formats/FrameFile.h"
#include "formats/PictureFile.h"
#include "frames/FrameSize.h"
#include "messages/ToolError.h"
#include "platform/Cancellation.h"
#include "platform/PathText.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "profile/TopLevel.h"
#include "runs/FrameRun.h"
#include "runs/LookAtFrame.h"

namespace vastrelline {
namespace {

bool IsSameFile(const std::string& a, const std::string& b) {
    std::error_code error;
    return std::filesystem::equivalent(PathOf(a), PathOf(b), error) && !error;
}

// The same file once both are there.
bool WillBeSameFile(const std::string& a, const std::string& b) {
    namespace fs = std::filesystem;
    std::error_code error;
    const auto whole = [&](const std::string& path) {
        return FoldName(fs::weakly_canonical(fs::absolute(PathOf(path)), error).string());
    };
    return IsSameFile(a, b) || whole(a) == whole(b);
}

// Also what --force does not allow.
void TestTargets(const RunOptions& options) {
    std::vector<std::pair<std::string, std::string>> earlier;
    for (const auto& [name, path] :
         {std::pair("--out", options.picture), std::pair("--strip", options.strip),
          std::pair("--log", options.log), std::pair("--record", options.record)}) {
        if (path.empty()) continue;
        for (const auto& [otherName, otherPath] : earlier)
            if (WillBeSameFile(path, otherPath))
                throw UsageError(std::string(name) + " is the file of " + otherName, "name another one");
        earlier.emplace_back(name, path);
        const std::filesystem::path ownLog = PathOf(options.profile).parent_path() / kLogLeaf;
        if (options.isInPlace && WillBeSameFile(path, ownLog.string()))
            throw UsageError(std::string(name) + " is the log that the run itself writes",
                             "name another file");
        if (IsSameFile(path, options.profile)) throw UsageError(std::string(name) + " is the profile itself");
        if (IsSameFile(path, options.frame)) throw UsageError(std::string(name) + " is the frame itself");
    }
}

// The files of one run: nothing is there under its name before all is done.
class RunFiles {
public:
    explicit RunFiles(const RunOptions& options) {
        // Before the work, so that a name that is taken or a folder that is missing costs no time.
        std::string picture = options.picture;
        if (FileKindOf(picture) == FileKind::Bmp) std::replace(picture.begin(), picture.end(), '\\', '/');
        picture_ = std::make_unique<OutputFile>(picture, options.mayReplace);
        if (!options.log.empty()) log_ = std::make_unique<OutputFile>(options.log, options.mayReplace);
        if (!options.record.empty())
            record_ = std::make_unique<OutputFile>(options.record, options.mayReplace);
        if (!options.strip.empty()) strip_ = std::make_unique<OutputFile>(options.strip, options.mayReplace);
    }

    OutputFile& Picture() { return *picture_; }
    OutputFile& Log() { return *log_; }
    OutputFile& Strip() { return *strip_; }
    OutputFile& Record() { return *record_; }

    void Publish() {
        for (const std::unique_ptr<OutputFile>* file : {&picture_, &log_, &strip_, &record_})
            if (*file) (*file)->Publish();
    }

private:
    std::unique_ptr<OutputFile> picture_;
    std::unique_ptr<OutputFile> log_;
    std::unique_ptr<OutputFile> strip_;
    std::unique_ptr<OutputFile> record_;
};

void Append(std::vector<Finding>& findings, std::vector<Finding> more) {
    std::move(more.begin(), more.end(), std::back_inserter(findings));
}

std::vector<Finding> LookAtLog(const std::string& path, const std::string& bytes) {
    if (!bytes.empty()) return {};
    return {{Severity::Warning, path, 0, 1, "the run wrote no log; SAVE_LOG=1 in its section switches it on",
             "no-log"}};
}

}  // namespace

std::string_view RunCommand::Examples() const {
    return "  vastrelline run tooth_1300x1668.raw --profile dental.ini --section General --out tooth.png\n"
           "  vastrelline run tooth.png --profile dental.ini --section LowDose --out tooth.tif \\\n"
           "      --strip strip.png --json\n"
           "  vastrelline run tooth.png --profile dental.ini --section General --against "
           "old/libvastrelline.so\n";
}

std::string_view RunCommand::Notes() const {
    return "The run uses a private copy of the profile, so that the file stays byte for byte; --in-place "
           "does\n"
           "what a host does. What does not fit is said before the run; a section that is missing ends it.\n";
}

void RunCommand::AddOptions(CLI::App& command) { AddRunOptions(command, options_); }

ExitCode RunCommand::Execute(CommandContext& context) {
    TestRunOptions(options_);
    if (!options_.against.empty()) return RunAgainst(options_, context);
    if (const ExportTraits* const named = FindNamedTraits(options_)) TestRunExport(options_, *named);
    TestTargets(options_);
    const ProfileFile profile = ReadRunProfile(options_);
    RunReport report;
    TestMeaning(profile, options_, report.findings);
    const ExportTraits& traits = FindTraits(profile, options_);
    TestRunExport(options_, traits);
    RunFiles files(options_);

    const LoadedFrame frame =
        LoadFrameFile(options_.frame, {ParseFrameSize(options_.size), FindSensorSize(profile)});
    const SectionPlan plan = MakeSectionPlan(profile, options_.section, traits.kind);
    Append(report.findings, LookBeforeRun(options_, frame, profile, plan, traits));
    for (const Finding& finding : report.findings) context.messages.Show(finding);

    ExportRequest call = MakeCall(options_, traits, frame.frame);
    Progress progress = context.messages.Follow("running", 0);
    call.onWait = [&progress] { progress.Update(0, 0); };
    const PrivateFolder bitmaps;
    if (traits.takesBitmapPath) call.bitmapPath = bitmaps.Inside("picture.bmp");
    const ProfileUse use = options_.isInPlace ? ProfileUse::InPlace : ProfileUse::PrivateCopy;
    FrameRun run = RunFrame(profile, plan, use, {}, call, context.callExport);
    TestCode(run, traits);

    const int32_t topLevel = ReadTopLevel(profile, plan.section);
    std::vector<Finding> after = std::move(run.findings);
    const RunSettings settings{options_, profile, plan, traits};
    RunRecord record;
    if (traits.takesBitmapPath) {
        const std::vector<uint8_t> bitmap = ReadBitmap(call.bitmapPath, traits);
        if (!options_.record.empty())
            record = MakeRunRecord(settings, frame.frame, DecodeBmp(bitmap), std::nullopt);
        files.Picture().Write(bitmap);
        report.pictureKind = "bitmap of 8 bits";
    } else {
        PictureStyle style = MakeStyle(options_, topLevel);
        const Frame result{frame.frame.width, frame.frame.height, run.call.output};
        record = MakeRunRecord(settings, frame.frame, result, style.window);
        style.texts = RecordTexts(record);
        files.Picture().Write(EncodePicture(options_.picture, result, style));
        report.pictureKind = DescribeStyle(style);
        Append(after, LookAtResult(options_.picture, run.call.output));
    }
    if (!options_.record.empty()) {
        const std::string text = RecordFileText(record, options_.record, context.command);
        files.Record().Write({text.begin(), text.end()});
    }
    if (!options_.log.empty()) {
        files.Log().Write({run.logBytes.begin(), run.logBytes.end()});
        Append(after, LookAtLog(options_.log, run.logBytes));
    }
    if (!options_.strip.empty())
        files.Strip().Write(MakeStrip(profile, plan, run, frame.frame, topLevel, context.callExport));
    if (IsCancelled()) throw CancelledError();
    files.Publish();
    progress.Finish();
    for (const Finding& finding : after) context.messages.Show(finding);
    Append(report.findings, std::move(after));

    report.framePath = options_.frame;
    report.frame = &frame;
    report.input = RangeOf(frame.frame.pixels);
    report.profilePath = profile.Path();
    report.plan = &plan;
    report.traits = &traits;
    report.run = &run;
    report.isInPlace = options_.isInPlace;
    report.picturePath = options_.picture;
    report.logPath = options_.log;
    report.stripPath = options_.strip;
    report.recordPath = options_.record;
    if (context.wantsJson)
        PrintObject(context, ExitCode::Well, RunToJson(report));
    else
        PrintRunReport(context.report, report);
    return ExitCode::Well;
}

}  // namespace vastrelline
