// SPDX-License-Identifier: Apache-2.0
#include "commands/RunOptions.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <utility>

#include "commands/SizeOption.h"
#include "files/FileKind.h"
#include "frames/GreyWindow.h"
#include "messages/Suggestion.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

constexpr double kMostSeconds = 1e6;

std::vector<std::string> ExportNames() {
    std::vector<std::string> names;
    for (const ExportTraits& traits : AllExports()) names.emplace_back(traits.name);
    return names;
}

void AddTarget(CLI::App& command, RunOptions& options) {
    command
        .add_option("--out", options.picture,
                    "Where the picture goes: .png or .bmp (8 bits), .pgm, .tif or .raw (16 bits); not with "
                    "--against")
        ->group("Needed")  // as TestRunOptions tests it
        ->type_name("PICTURE");
}

void AddOutputs(CLI::App& command, RunOptions& options) {
    AddLevelOptions(command, options);
    command
        .add_option("--strip", options.strip,
                    "One more picture: before, after, and the frame after every stage, from a second run")
        ->type_name("PNG");
    command.add_option("--log", options.log, "Keep the library's log of the run in this file")
        ->type_name("FILE");
    command
        .add_option(
            "--record", options.record,
            "Keep in this file, as JSON, how the picture was made; 'vastrelline rerun' makes it again")
        ->type_name("FILE");
    command
        .add_option("--against", options.against,
                    "Make no picture: run this build of the library, too, and tell at which stage the pixels "
                    "begin to differ")
        ->type_name("LIBRARY");
    command.add_flag("--force", options.mayReplace, "Replace files that exist");
    command.add_flag("--in-place", options.isInPlace,
                     "Use the profile itself, as a host does: the sensor's values and the log go to it");
}

// A comparison of builds leaves no file.
void TestAgainst(const RunOptions& options) {
    const std::pair<const char*, bool> misfits[] = {
        {"--out", !options.picture.empty()},   {"--strip", !options.strip.empty()},
        {"--log", !options.log.empty()},       {"--record", !options.record.empty()},
        {"--window", !options.window.empty()}, {"--png16", options.isPng16},
        {"--in-place", options.isInPlace}};
    for (const auto& [name, isThere] : misfits)
        if (isThere)
            throw UsageError(std::string(name) + " does not go with --against, which makes no file",
                             "leave one of them out");
}

}  // namespace

void AddInputOptions(CLI::App& command, RunOptions& options) {
    command.add_option("FRAME", options.frame, "The frame; - reads standard input")
        ->required()
        ->type_name("");
    AddSettingsOptions(command, options);
}

void AddSettingsOptions(CLI::App& command, RunOptions& options) {
    command.add_option("--profile", options.profile, "The profile file; it stays as it is")
        ->required()
        ->type_name("PROFILE");
    command.add_option("--section", options.section, "Section of the profile that holds the settings")
        ->required()
        ->type_name("SECTION");
}

void AddFrameSizeOption(CLI::App& command, RunOptions& options) {
    AddSizeOption(
        command, options.size,
        "Size of a raw frame; without it the size in the frame's name, or the sensor's in the profile");
}

void AddLevelOptions(CLI::App& command, RunOptions& options) {
    command
        .add_option("--window", options.window,
                    "Levels that become black and white in a .png; without it 0 to the section's OUTPUTRANGE")
        ->type_name("LOW:HIGH");
    command.add_flag("--png16", options.isPng16, "Keep all 16 bits in a .png (looks dark in most viewers)");
}

void AddCallOptions(CLI::App& command, RunOptions& options) {
    command
        .add_option(
            "--export", options.exportName,
            "The library's function. Without it ImageProcessing, or what PROCMODE, --out and the options "
            "below ask for")
        ->type_name("EXPORT");
    command
        .add_option(
            "--geometry", options.geometry,
            "How the frame lies on the sensor, for ImageProcessingS and ImageProcessing_NS: rotation, "
            "flip, chamfer and rounding of both corners, width and height of the full frame, and what is "
            "cut off at left, top, right and bottom")
        ->expected(kGeometryValues)
        ->delimiter(',')
        ->type_name("TEN NUMBERS");
    CLI::Option* const folder =
        command
            .add_option("--sensor-folder", options.sensorFolder, "Name of the sensor, for ImageProcessing_NE")
            ->type_name("NAME");
    CLI::Option* const mode =
        command
            .add_option("--sensor-mode", options.sensorMode,
                        "Mode of the sensor, for ImageProcessing_NE; 2: twice the resolution")
            ->type_name("NUMBER");
    command.add_flag("--mapping", options.applyMapping, "Squeeze the result into the levels 1228 to 2905");
    command.add_flag("--spot-correction", options.applySpotCorrection,
                     "Even out the frame's brightness first");
    command.add_flag("--force-section", options.forceSection,
                     "Run also if the section or its settings are missing");
    CLI::Option* const timeout =
        command.add_option("--timeout", options.timeoutSeconds, "End the run after this time")
            ->type_name("SECONDS");
    command.callback([folder, mode, timeout, &options] {
        options.hasSensor = folder->count() + mode->count() > 0;
        options.hasTimeout = timeout->count() > 0;
    });
}

void AddRunOptions(CLI::App& command, RunOptions& options) {
    // What must be there stands first.
    AddInputOptions(command, options);
    AddTarget(command, options);
    AddFrameSizeOption(command, options);
    AddOutputs(command, options);
    AddCallOptions(command, options);
}

void TestCallOptions(const RunOptions& options) {
    if (!options.exportName.empty() && FindExport(options.exportName) == nullptr)
        throw UsageError("there is no export '" + options.exportName + "'",
                         DidYouMean(options.exportName, ExportNames(), "see vastrelline run --help"));
    const double seconds = options.timeoutSeconds;
    if (options.hasTimeout && !(seconds > 0.0 && seconds <= kMostSeconds))
        throw UsageError("--timeout should be a number of seconds above 0");
}

void TestRunOptions(const RunOptions& options) {
    TestCallOptions(options);
    if (!options.against.empty()) {
        TestAgainst(options);
        return;
    }
    if (options.picture.empty()) throw UsageError("--out is required", "see vastrelline run --help");
    const FileKind kind = FileKindOf(options.picture);
    if (!IsPictureKind(kind))
        throw UsageError("'" + options.picture + "' should end in .png, .bmp, .pgm, .tif or .raw");
    if (!options.strip.empty() && FileKindOf(options.strip) != FileKind::Png)
        throw UsageError("'" + options.strip + "' should end in .png");
    if (!options.record.empty() && options.isInPlace)
        throw UsageError("--record does not go with --in-place",
                         "such a run changes the profile it is made of");
    if ((!options.window.empty() || options.isPng16) && kind != FileKind::Png)
        throw UsageError("--window and --png16 are for .png pictures only");
    if (!options.window.empty() && options.isPng16)
        throw UsageError("--png16 keeps all levels: it goes without --window");
    if (!options.window.empty() && !ParseGreyWindow(options.window))
        throw UsageError("'" + options.window + "' is no window", "write it as in 0:4095");
}

void TestCallExport(const RunOptions& options, const ExportTraits& traits) {
    if (!options.geometry.empty() && !traits.takesGeometry)
        throw UsageError("--geometry is for ImageProcessingS and ImageProcessing_NS only");
    if (options.hasSensor && !traits.takesSensor)
        throw UsageError("--sensor-folder and --sensor-mode are for ImageProcessing_NE only");
    if ((options.applyMapping || options.applySpotCorrection) && !traits.takesCorrections)
        throw UsageError("--mapping and --spot-correction are not for " + std::string(traits.name));
}

void TestRunExport(const RunOptions& options, const ExportTraits& traits) {
    const bool isBitmap = FileKindOf(options.picture) == FileKind::Bmp;
    const std::string name(traits.name);
    if (traits.takesBitmapPath && !isBitmap)
        throw UsageError(name + " gives a bitmap only", "--out should end in .bmp");
    if (!traits.takesBitmapPath && isBitmap)
        throw UsageError(name + " writes no bitmap",
                         "choose --export ImageProcessing_N, _NS or _NE for a .bmp, or leave it out");
    TestCallExport(options, traits);
}

}  // namespace vastrelline
