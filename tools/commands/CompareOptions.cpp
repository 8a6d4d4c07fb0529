// SPDX-License-Identifier: Apache-2.0
#include "commands/CompareOptions.h"

#include <CLI/CLI.hpp>
#include <array>
#include <filesystem>
#include <system_error>

#include "commands/OutputEnding.h"
#include "commands/SizeOption.h"
#include "files/FileKind.h"
#include "formats/FrameFile.h"
#include "messages/ToolError.h"
#include "platform/PathText.h"

namespace vastrelline {
namespace {

constexpr int32_t kTopLevel = 65535;

bool IsSameFile(const std::string& a, const std::string& b) {
    std::error_code error;
    return std::filesystem::equivalent(PathOf(a), PathOf(b), error) && !error;
}

void TestDifference(const CompareOptions& options, bool isOfFolders) {
    if (options.difference.empty()) {
        if (options.gain > 0) throw UsageError("--gain is for the picture of --difference");
        return;
    }
    if (isOfFolders)
        throw UsageError("--difference is for two frames", "--report shows the differences of folders");
    const FileKind kind = FileKindOf(options.difference);
    if (kind == FileKind::Other)
        throw UsageError("'" + options.difference + "' should end in .raw, .pgm, .png, .tif or .bmp");
    if (options.gain > 0 && (kind == FileKind::Raw || kind == FileKind::Pgm))
        throw UsageError("--gain is for .png, .tif and .bmp: the others hold the differences themselves");
    for (const std::string& frame : {options.first, options.second})
        if (IsSameFile(frame, options.difference))
            throw UsageError("the difference would replace a frame that is compared");
}

}  // namespace

void AddCompareOptions(CLI::App& command, CompareOptions& options) {
    command
        .add_option("A", options.first,
                    "A frame: .raw, .pgm, .png, .tif or .bmp; - is standard input. Or a folder")
        ->required()
        ->type_name("");
    command.add_option("B", options.second, "Another one, of any kind of file; another folder")
        ->required()
        ->type_name("");
    AddSizeOption(command, options.size, "Size of raw frames without it in their names");
    command
        .add_option("--tolerance", options.tolerance,
                    "Levels by which a pixel may differ; if none differs by more, the exit code is 0")
        ->type_name("LEVELS")
        ->check(CLI::Range(0, kTopLevel).description(""));
    command
        .add_option("--difference", options.difference,
                    "A picture of the differences: black where the frames are equal")
        ->type_name("FILE");
    command
        .add_option("--gain", options.gain,
                    "Grey levels of that picture for a difference of one; without it the largest difference "
                    "is white")
        ->type_name("NUMBER")
        ->check(CLI::PositiveNumber.description(""));
    command
        .add_option("--report", options.report,
                    "One HTML file for people, with the pictures in it, that needs no network; it ends in "
                    ".html")
        ->type_name("FILE");
    command
        .add_option("--junit", options.junit, "The outcome as JUnit XML, for build servers; it ends in .xml")
        ->type_name("FILE");
    command.add_flag("--force", options.mayReplace, "Replace files that exist");
}

void TestCompareOptions(const CompareOptions& options, bool isOfFolders) {
    if (options.first == kStandardInput && options.second == kStandardInput)
        throw UsageError("standard input can be one frame only");
    TestEnding(options.report, ".html", "--report");
    TestEnding(options.junit, ".xml", "--junit");
    TestDifference(options, isOfFolders);
}

}  // namespace vastrelline
