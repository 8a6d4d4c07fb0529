// SPDX-License-Identifier: Apache-2.0
#include "commands/TuneCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <optional>
#include <utility>

#include "api/ApiRoutes.h"
#include "batch/FrameList.h"
#include "commands/RunPreparation.h"
#include "files/PrivateFolder.h"
#include "messages/ToolError.h"
#include "platform/BrowserOpen.h"
#include "profile/MissingSection.h"
#include "runs/LookAtFrame.h"
#include "server/EventChannel.h"
#include "server/PageServer.h"
#include "workbench/AgainstFiles.h"
#include "workbench/Workbench.h"

namespace vastrelline {
namespace {

std::vector<std::string> FramePaths(const std::vector<std::string>& inputs) {
    const PrivateFolder nowhere;  // no result is written
    std::vector<std::string> paths;
    for (ListedFrame& frame : ListFrames(inputs, nowhere.Path().string(), "png"))
        paths.push_back(std::move(frame.path));
    return paths;
}

// The section that is asked for; without a wish the first that a host may name.
std::string FindFirstSection(const ProfileFile& file, const std::string& wish) {
    if (!wish.empty()) {
        if (file.FindSection(wish) == nullptr) throw MissingSection(file, wish);
        return wish;
    }
    for (const std::string& name : file.SectionNames())
        if (!name.empty() && !IsSameKeyName(name, kSensorSectionName) &&
            !IsSameKeyName(name, kLowSectionName))
            return name;
    throw InputError(file.Path(), "has no section that a host could name",
                     "begin with vastrelline profile new");
}

}  // namespace

std::string_view TuneCommand::Examples() const {
    return "  vastrelline tune tooth_1300x1668.raw --profile dental.ini\n"
           "  vastrelline tune scans --profile dental.ini --section LowDose --against old.ini\n"
           "  vastrelline tune scans --profile dental.ini --no-browser --port 8080\n";
}

std::string_view TuneCommand::Notes() const {
    return "The page is served on 127.0.0.1 to whoever knows its address, and to nobody else. The profile "
           "is\n"
           "written when the page is told to save it, and never otherwise. Runs are kept in the tool's "
           "folder for\n"
           "states, with the profile's text and a small picture of each, and come back with the next "
           "workbench on\n"
           "this profile; --no-history keeps none. Ctrl-C ends the workbench.\n";
}

void TuneCommand::AddOptions(CLI::App& command) {
    command.add_option("FRAME", inputs_, "Frames, or folders of frames")->required()->type_name("");
    command.add_option("--profile", options_.profile, "The profile file; written when the page saves it")
        ->required()
        ->type_name("PROFILE");
    command.add_option("--section", options_.section, "The section to begin with; without it the first")
        ->type_name("SECTION");
    AddFrameSizeOption(command, options_);
    command
        .add_option("--against", against_,
                    "A profile or a build of the library that the page may compare with; may be repeated")
        ->allow_extra_args(false)
        ->type_name("FILE");
    command.add_option("--port", port_, "The port to be served on; without it a free one")->type_name("PORT");
    command.add_flag("--no-browser", isBrowserUnwanted_, "Print the address and open no browser");
    command.add_flag("--no-history", isHistoryUnwanted_,
                     "Keep no run for the next workbench, and show none of the last");
    AddCallOptions(command, options_);
}

ExitCode TuneCommand::Execute(CommandContext& context) {
    TestCallOptions(options_);
    const ExportTraits* const named = FindNamedTraits(options_);
    if (named != nullptr) TestCallExport(options_, *named);
    const ProfileFile profile = ReadRunProfile(options_);
    WorkbenchSetup setup;
    setup.frames = FramePaths(inputs_);
    setup.against = ListAgainstFiles(against_);
    setup.sizes = {ParseFrameSize(options_.size), FindSensorSize(profile)};
    setup.profile = profile.Path();
    setup.bytes = profile.Text().Bytes();
    setup.section = FindFirstSection(profile, options_.section);
    setup.call = MakeCall(options_, TraitsOf(named == nullptr ? ExportKind::Plain : named->kind), {});
    if (!isHistoryUnwanted_) {
        setup.historyFile = HistoryFileOf(setup.profile);
        if (setup.historyFile.empty())
            setup.notes.push_back("there is no folder to keep the runs in for later");
    }
    if (named != nullptr) setup.namedExport = named->kind;

    EventChannel events;
    Workbench bench(std::move(setup), context.callExport, events);
    const HttpHandler handler = [&bench](const HttpRequest& request) { return AnswerApi(bench, request); };
    ServePage(port_, handler, events,
              {[&](const std::string& address) {
                   context.report << address << '\n' << std::flush;
                   bench.Start();
                   if (!isBrowserUnwanted_ && !OpenInBrowser(address))
                       context.messages.Tell("no browser could be opened; open the address in yours");
                   context.messages.Tell("Ctrl-C ends the workbench");
               },
               [&bench] { bench.PollDisk(); }, [&bench] { bench.Stop(); }});
    return ExitCode::Well;
}

}  // namespace vastrelline
