// SPDX-License-Identifier: Apache-2.0
#include "commands/BatchOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

#include "commands/JobsOption.h"
#include "commands/SizeOption.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

constexpr size_t kMostMebibytes = size_t{1} << 20;

void AddWork(CLI::App& command, BatchOptions& options) {
    AddJobsOption(command,
                  "Frames that are worked on at a time, each in a process of its own; without it as many as "
                  "there are processors",
                  options.jobs);
    command
        .add_option(
            "--memory", options.memoryMebibytes,
            "The most memory that one of these processes gets; without it what a frame of its size may "
            "need")
        ->type_name("MIB");
    command.add_flag("--keep-going", options.keepsGoing, "Go on after a frame that failed");
    command.add_flag(
        "--resume", options.isResumed,
        "Do only what an earlier batch has not done: other frames, and those whose frame, profile, "
        "section, options, library or result have changed");
    command.add_flag("--force", options.run.mayReplace, "Begin anew, and replace files that exist");
}

}  // namespace

void AddBatchOptions(CLI::App& command, BatchOptions& options) {
    command.add_option("IN", options.inputs, "Frames, folders of frames, and patterns such as 'scans/*.raw'")
        ->required()
        ->type_name("");
    AddSettingsOptions(command, options.run);
    command.add_option("--out", options.folder, "The folder of the results; it is made if it is missing")
        ->required()
        ->type_name("DIR");
    options.format = "png";
    command.add_option("--format", options.format, "What the results are; without it png")
        ->type_name("{png,bmp,pgm,tif,raw}");
    AddSizeOption(
        command, options.run.size,
        "Size of raw frames; without it the size in a frame's name, or the sensor's in the profile");
    AddLevelOptions(command, options.run);
    AddWork(command, options);
    AddCallOptions(command, options.run);
}

void TestBatchOptions(const BatchOptions& options) {
    constexpr std::string_view kFormats[] = {"png", "bmp", "pgm", "tif", "raw"};
    if (std::find(std::begin(kFormats), std::end(kFormats), options.format) == std::end(kFormats))
        throw UsageError("there is no format '" + options.format + "'", "png, bmp, pgm, tif or raw");
    TestJobs(options.jobs);
    if (options.memoryMebibytes > kMostMebibytes)
        throw UsageError("--memory should be at most " + std::to_string(kMostMebibytes));
    TestRunOptions(options.run);
}

std::string DescribeResultOptions(const BatchOptions& options, const ExportTraits& traits) {
    const RunOptions& run = options.run;
    std::ostringstream text;
    text << traits.name << " --format " << options.format;
    if (!run.window.empty()) text << " --window " << run.window;
    if (run.isPng16) text << " --png16";
    if (!run.size.empty()) text << " --size " << run.size;
    if (run.applyMapping) text << " --mapping";
    if (run.applySpotCorrection) text << " --spot-correction";
    for (size_t i = 0; i < run.geometry.size(); ++i)
        text << (i == 0 ? " --geometry " : ",") << run.geometry[i];
    if (run.hasSensor) text << " --sensor-mode " << run.sensorMode << " --sensor-folder " << run.sensorFolder;
    return text.str();
}

}  // namespace vastrelline
