// SPDX-License-Identifier: Apache-2.0
#include "commands/RerunCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>
#include <vector>

#include "commands/JsonObject.h"
#include "commands/RunPicture.h"
#include "commands/RunPreparation.h"
#include "commands/RunProvenance.h"
#include "files/InputFile.h"
#include "files/PrivateFolder.h"
#include "files/Sha256.h"
#include "formats/BmpFormat.h"
#include "formats/FrameFile.h"
#include "formats/PngFormat.h"
#include "formats/RawFormat.h"
#include "frames/FrameDifference.h"
#include "frames/FrameSize.h"
#include "messages/ToolError.h"
#include "platform/PathText.h"
#include "profile/SectionPlan.h"
#include "runs/FrameRun.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

// A result that is to be made again.
struct MadeResult {
    std::string path;
    RunRecord record;
    std::optional<Frame> picture;  // of a PNG: what it shows
};

MadeResult ReadResult(const std::string& path) {
    constexpr uint64_t kMostBytes = uint64_t{1} << 31;
    const std::vector<uint8_t> bytes = ReadInputFile(path, kMostBytes);
    constexpr size_t kSignatureBytes = 4;
    const bool isPng = bytes.size() >= kSignatureBytes &&
                       std::string(bytes.begin(), bytes.begin() + kSignatureBytes) == "\x89PNG";
    if (!isPng) return {path, ReadRecord({bytes.begin(), bytes.end()}, path), std::nullopt};
    const std::optional<std::string> text = FindPngText(bytes, kRecordKeyword);
    MadeResult result{path, ReadRecord(text.value_or(""), path), std::nullopt};
    try {
        result.picture = DecodePng(bytes);
    } catch (const std::runtime_error& error) {
        throw InputError(path, error.what());
    }
    return result;
}

// Before the work: what neither the record nor an option names.
void TestNames(const MadeResult& made, bool hasFrame, bool hasProfile) {
    if (hasFrame && hasProfile) return;
    const std::string remedy = hasProfile ? "give the frame by --frame"
                               : hasFrame ? "give the profile by --profile"
                                          : "give the frame by --frame and the profile by --profile";
    throw ToolError(ExitCode::WrongUse, made.path,
                    made.picture ? "a PNG names no files, so that it may be passed on"
                                 : "the record does not name all files",
                    remedy);
}

// The named file, or the one of the record, which lies relative to that. Nothing is taken out of the path:
// where a folder in it is a symbolic link, ".." leads elsewhere than the letters say.
std::string FindFile(const std::string& named, const std::string& told, const std::string& recordPath) {
    if (!named.empty()) return named;
    std::string path = (PathOf(recordPath).parent_path() / PathOf(told)).string();
    return path == kStandardInput ? "./" + path : path;
}

void TestHash(const std::string& path, const std::string& hash, const std::string& then, const char* what) {
    if (hash == then) return;
    throw InputError(path, std::string("is not the ") + what + " that the result was made of",
                     "it has another SHA-256: " + hash + ", then " + then);
}

RunOptions OptionsOf(const RunRecord& record) {
    RunOptions options;
    options.section = record.section;
    options.exportName = record.exportName;
    options.geometry = record.geometry;
    options.hasSensor = record.hasSensor;
    options.sensorFolder = record.sensorFolder;
    options.sensorMode = record.sensorMode;
    options.applyMapping = record.applyMapping;
    options.applySpotCorrection = record.applySpotCorrection;
    return options;
}

// What is compared.
struct Rerun {
    std::string resultHash;
    std::optional<size_t> pictureDifferences;  // pixels that the picture shows otherwise; none: no picture
};

Rerun MakeAgain(const RunOptions& options, const MadeResult& made, CommandContext& context) {
    const RunRecord& record = made.record;
    const ExportTraits* const traits = FindExport(record.exportName);
    if (traits == nullptr)
        throw InputError(made.path, "was made by the export '" + record.exportName + "', which there is not",
                         "see vastrelline run --help for those that there are");
    const Frame frame = ReadFrameFile(options.frame, record.frameSize);
    TestHash(options.frame, Sha256Of(EncodeRaw(frame)), record.frameHash, "frame");
    const ProfileFile profile = ReadRunProfile(options);
    TestHash(profile.Path(), Sha256Of(std::string(profile.Text().Bytes())), record.profileHash, "profile");
    const SectionPlan plan = MakeSectionPlan(profile, options.section, traits->kind);
    if (SensorHashOf(plan, options.sensorFolder) != record.sensorHash)
        throw InputError(made.path, "was made with another profile of the sensor's own",
                         "put the older one back, or make the result anew");
    ExportRequest call = MakeCall(options, *traits, frame);
    Progress progress = context.messages.Follow("running", 0);
    call.onWait = [&progress] { progress.Update(0, 0); };
    const PrivateFolder bitmaps;
    if (traits->takesBitmapPath) call.bitmapPath = bitmaps.Inside("picture.bmp");
    FrameRun run =
        RunFrame(profile, plan, ProfileUse::PrivateCopy, WithoutDumps(), std::move(call), context.callExport);
    TestCode(run, *traits);
    const Frame result = traits->takesBitmapPath
                             ? Frame(DecodeBmp(ReadBitmap(run.call.bitmapPath, *traits)))
                             : Frame{frame.width, frame.height, std::move(run.call.output)};
    Rerun again{Sha256Of(EncodeRaw(result)), std::nullopt};
    if (!made.picture) return again;
    Frame shown = result;
    if (record.window) {
        const std::vector<uint8_t> levels = RenderThroughWindow(result, *record.window);
        shown.pixels.assign(levels.begin(), levels.end());
    }
    const bool isSameSize = shown.width == made.picture->width && shown.height == made.picture->height;
    again.pictureDifferences =
        isSameSize ? FindDifference(*made.picture, shown).count : made.picture->pixels.size();
    return again;
}

nlohmann::ordered_json NumberJson(const std::optional<size_t>& number) {
    return number ? nlohmann::ordered_json(*number) : nlohmann::ordered_json(nullptr);
}

}  // namespace

std::string_view RerunCommand::Examples() const {
    return "  vastrelline rerun tooth.json\n"
           "  vastrelline rerun tooth.png --frame tooth_1300x1668.raw --profile dental.ini\n"
           "  vastrelline rerun tooth.json --json\n";
}

std::string_view RerunCommand::Notes() const {
    return "A record is written by 'vastrelline run --record', and every PNG of run and batch has one "
           "inside. "
           "A PNG\n"
           "names no file, so that it may be passed on: say where frame and profile are. They are taken only "
           "with\n"
           "the SHA-256 that they had then. Exit code: 0 the same, 1 different, 3 frame or profile gone or "
           "changed.\n";
}

void RerunCommand::AddOptions(CLI::App& command) {
    command.add_option("RESULT", result_, "A record of a run, or a PNG of run or batch")
        ->required()
        ->type_name("");
    command.add_option("--frame", frame_, "The frame that it was made of; without it the one that it names")
        ->type_name("FRAME");
    command.add_option("--profile", profile_, "The profile; without it the one that it names")
        ->type_name("PROFILE");
}

ExitCode RerunCommand::Execute(CommandContext& context) {
    const MadeResult made = ReadResult(result_);
    const RunRecord& record = made.record;
    RunOptions options = OptionsOf(record);
    TestNames(made, !(frame_ + record.framePath).empty(), !(profile_ + record.profilePath).empty());
    options.frame = FindFile(frame_, record.framePath, result_);
    options.profile = FindFile(profile_, record.profilePath, result_);
    const Rerun again = MakeAgain(options, made, context);
    const bool isSameResult = again.resultHash == record.resultHash;
    const bool isSamePicture = again.pictureDifferences.value_or(0) == 0;
    const bool isSameLibrary = LibraryHash() == record.libraryHash;
    const ExitCode code = isSameResult && isSamePicture ? ExitCode::Well : ExitCode::Findings;
    if (context.wantsJson) {
        PrintObject(context, code,
                    {{"result", result_},
                     {"same", code == ExitCode::Well},
                     {"sameResult", isSameResult},
                     {"sameLibrary", isSameLibrary},
                     {"differingPixelsOfPicture", NumberJson(again.pictureDifferences)},
                     {"sha256", again.resultHash},
                     {"record", RecordToJson(record)}});
        return code;
    }
    std::ostream& out = context.report;
    out << "result   " << OneLine(result_) << ": " << (code == ExitCode::Well ? "the same" : "different")
        << '\n';
    out << "run      " << OneLine(CommandOf(record)) << '\n';
    out << "sha256   " << again.resultHash;
    if (!isSameResult) out << ", then " << record.resultHash;
    out << '\n';
    if (again.pictureDifferences)
        out << "picture  "
            << (isSamePicture
                    ? std::string("shows this result")
                    : std::to_string(*again.pictureDifferences) + " pixels are not those of the run")
            << '\n';
    out << "library  " << (isSameLibrary ? "the same file" : "another file than then") << '\n';
    return code;
}

}  // namespace vastrelline
