#include "commands/RunCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iomanip>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "commands/OutputRange.h"
#include "commands/SizeOption.h"
#include "files/FileKind.h"
#include "files/OutputFile.h"
#include "formats/FrameFile.h"
#include "formats/PictureFile.h"
#include "frames/FrameSize.h"
#include "frames/GreyWindow.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

// Everything that is wrong with the options and needs no file.
const ExportTraits& TestOptions(const RunOptions& options) {
    const ExportTraits* const traits = FindExport(options.exportName);
    if (traits == nullptr) throw UsageError("there is no export '" + options.exportName + "'");
    const FileKind kind = FileKindOf(options.picture);
    const std::string name(traits->name);
    if (kind == FileKind::Other)
        throw UsageError("'" + options.picture + "' should end in .raw, .pgm, .png, .tif or .bmp");
    if (traits->takesBitmapPath && kind != FileKind::Bmp)
        throw UsageError(name + " gives a bitmap only: --out should end in .bmp");
    if (!traits->takesBitmapPath && kind == FileKind::Bmp)
        throw UsageError(name +
                         " writes no bitmap: choose --export ImageProcessing_N, _NS or _NE for a .bmp");
    if (!options.geometry.empty() && !traits->takesGeometry)
        throw UsageError("--geometry is for ImageProcessingS and ImageProcessing_NS only");
    if (options.hasSensor && !traits->takesSensor)
        throw UsageError("--sensor-folder and --sensor-mode are for ImageProcessing_NE only");
    if ((options.applyMapping || options.applySpotCorrection) && !traits->takesCorrections)
        throw UsageError("--mapping and --spot-correction are not for " + name);
    if ((!options.window.empty() || options.isPng16) && kind != FileKind::Png)
        throw UsageError("--window and --png16 are for .png pictures only");
    if (!options.window.empty() && options.isPng16)
        throw UsageError("--png16 keeps all levels: it goes without --window");
    if (!options.window.empty() && !ParseGreyWindow(options.window))
        throw UsageError("'" + options.window + "' is no window; write it as in 0:4095");
    return *traits;
}

bool IsSameFile(const std::string& a, const std::string& b) {
    std::error_code error;
    return std::filesystem::equivalent(a, b, error) && !error;
}

// Also what --force does not allow, and what would be noticed only after the work.
void TestTarget(const RunOptions& options) {
    if (IsSameFile(options.picture, options.profile))
        throw UsageError("--out and --profile are the same file");
    if (IsSameFile(options.picture, options.frame)) throw UsageError("--out is the frame itself");
}

ExportRequest MakeRequest(const RunOptions& options, const ExportTraits& traits) {
    ExportRequest request;
    request.kind = traits.kind;
    request.frame = ReadFrameFile(options.frame, ParseFrameSize(options.size));
    request.output.resize(request.frame.pixels.size());
    request.profile = options.profile;
    request.section = options.section;
    request.applyMapping = options.applyMapping;
    request.applySpotCorrection = options.applySpotCorrection;
    request.sensorFolder = options.sensorFolder;
    request.sensorMode = options.sensorMode;
    if (!options.geometry.empty()) {
        request.geometry.emplace();
        std::copy(options.geometry.begin(), options.geometry.end(), request.geometry->begin());
    }
    return request;
}

void PrintRange(std::ostream& report, std::string_view title, const std::vector<uint16_t>& pixels) {
    const auto [least, greatest] = std::minmax_element(pixels.begin(), pixels.end());
    report << title << "levels " << *least << " to " << *greatest << '\n';
}

// Calls the export and tells about it; a code other than 0 ends the run.
void CallAndReport(ExportRequest& request, const ExportTraits& traits, const ExportCaller& callExport,
                   std::ostream& report) {
    const auto start = std::chrono::steady_clock::now();
    const int32_t code = callExport(request);
    const std::chrono::duration<double, std::milli> elapsedMs = std::chrono::steady_clock::now() - start;
    const std::string meaning = std::string(traits.name) + " returned " + std::to_string(code) + " (" +
                                std::string(ExportCodeText(code)) + ")";
    report << "result   " << meaning << " after " << std::fixed << std::setprecision(1) << elapsedMs.count()
           << " ms\n";
    if (code != 0) throw ProcessingError({}, meaning, "no picture was written");
}

// The library writes the bitmap itself, under a draft's name.
void RunToBitmap(const RunOptions& options, const ExportTraits& traits, const ExportCaller& callExport,
                 ExportRequest& request, std::ostream& report) {
    std::string target = options.picture;
    std::replace(target.begin(), target.end(), '\\', '/');  // the library takes both as separators
    OutputFile file(target, options.mayReplace);
    request.bitmapPath = file.DraftPath();
    CallAndReport(request, traits, callExport, report);
    std::error_code error;
    const uintmax_t size = std::filesystem::file_size(file.DraftPath(), error);
    if (error || size == 0)  // so it is with a path that is too long for the export
        throw ProcessingError({}, std::string(traits.name) + " reported success but saved no bitmap");
    file.Publish();
    report << "picture  " << target << " (bitmap of 8 bits)\n";
}

void RunToPicture(const RunOptions& options, const ExportTraits& traits, const ExportCaller& callExport,
                  ExportRequest& request, std::ostream& report) {
    // Before the work, so that a name that is taken or a folder that is missing costs no time.
    { const OutputFile trial(options.picture, options.mayReplace); }
    CallAndReport(request, traits, callExport, report);
    PrintRange(report, "output   ", request.output);

    PictureStyle style;
    style.mayReplace = options.mayReplace;
    style.topLevel = ReadOutputRange(options.profile, options.section);
    if (FileKindOf(options.picture) == FileKind::Png && !options.isPng16)
        style.window =
            options.window.empty() ? GreyWindow{0, style.topLevel} : ParseGreyWindow(options.window);
    const Frame result{request.frame.width, request.frame.height, std::move(request.output)};
    WritePictureFile(options.picture, result, style);

    report << "picture  " << options.picture;
    if (FileKindOf(options.picture) != FileKind::Png || options.isPng16)
        report << " (16-bit levels)\n";
    else
        report << " (8 bits, window " << style.window->low << " to " << style.window->high << ")\n";
}

}  // namespace

std::string_view RunCommand::Examples() const {
    return "  vastrelline run tooth.raw --size 1300x1668 --profile p.ini --section General --out tooth.png\n"
           "  vastrelline run tooth_1300x1668.raw --profile p.ini --section General --out tooth.pgm \\\n"
           "      --export ImageProcessingS --geometry 0 0 150 150 1300 1668 0 0 0 0\n"
           "  vastrelline run tooth_1300x1668.raw --profile p.ini --section General --out tooth.bmp \\\n"
           "      --export ImageProcessing_N\n";
}

void RunCommand::AddOptions(CLI::App& command) {
    command
        .add_option("FRAME", options_.frame, "The frame: .raw, .pgm, .png, .tif or .bmp; - is standard input")
        ->required()
        ->type_name("");
    AddSizeOption(command, options_.size, "Size of a raw frame; without it the size in the frame's name");
    command.add_option("--profile", options_.profile, "The profile file")->required()->type_name("FILE");
    command.add_option("--section", options_.section, "Section of the profile that holds the settings")
        ->required()
        ->type_name("NAME");
    command
        .add_option("--out", options_.picture,
                    "Where the picture goes: .png (8 bits), .pgm or .raw (16 bits), or .bmp (8 bits, by "
                    "ImageProcessing_N, _NS and _NE)")
        ->required()
        ->type_name("PICTURE");
    command
        .add_option("--export", options_.exportName,
                    "The library's function: ImageProcessing (default), ImageProcessingS, ImageProcessing_N, "
                    "ImageProcessing_NS, ImageProcessing_NE or ImageProcessingCR")
        ->type_name("NAME");
    command
        .add_option("--window", options_.window,
                    "Levels that become black and white in a .png; without it 0 to the section's OUTPUTRANGE")
        ->type_name("LOW:HIGH");
    command.add_flag("--png16", options_.isPng16, "Keep all 16 bits in a .png (looks dark in most viewers)");
    command
        .add_option(
            "--geometry", options_.geometry,
            "How the frame lies on the sensor, for ImageProcessingS and ImageProcessing_NS: rotation, "
            "flip, chamfer and rounding of both corners, width and height of the full frame, and what is "
            "cut off at left, top, right and bottom")
        ->expected(kGeometryValues)
        ->delimiter(',')
        ->type_name("TEN NUMBERS");
    CLI::Option* const folder = command
                                    .add_option("--sensor-folder", options_.sensorFolder,
                                                "Name of the sensor, for ImageProcessing_NE")
                                    ->type_name("NAME");
    CLI::Option* const mode =
        command
            .add_option("--sensor-mode", options_.sensorMode,
                        "Mode of the sensor, for ImageProcessing_NE; 2: twice the resolution")
            ->type_name("NUMBER");
    command.add_flag("--mapping", options_.applyMapping, "Squeeze the result into the levels 1228 to 2905");
    command.add_flag("--spot-correction", options_.applySpotCorrection,
                     "Even out the frame's brightness first");
    command.add_flag("--force", options_.mayReplace, "Replace the picture if it exists");
    command.callback([folder, mode, this] { options_.hasSensor = folder->count() + mode->count() > 0; });
}

ExitCode RunCommand::Execute(CommandContext& context) {
    const RunOptions& options = options_;
    const ExportCaller& callExport = context.callExport;
    std::ostream& report = context.report;
    const ExportTraits& traits = TestOptions(options);
    TestTarget(options);
    ExportRequest request = MakeRequest(options, traits);
    report << "read     " << options.frame << ", "
           << FormatFrameSize({request.frame.width, request.frame.height}) << " pixels\n"
           << "export   " << traits.name << " with section '" << options.section << "' of " << options.profile
           << '\n';
    PrintRange(report, "input    ", request.frame.pixels);
    if (traits.takesBitmapPath)
        RunToBitmap(options, traits, callExport, request, report);
    else
        RunToPicture(options, traits, callExport, request, report);
    return ExitCode::Well;
}

}  // namespace vastrelline
