#include "commands/CommandLine.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <new>
#include <string>

#include "commands/CompareCommand.h"
#include "commands/PhantomCommand.h"
#include "commands/RunCommand.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

constexpr int kFailure = 1;
constexpr int kWrongUse = 2;

constexpr const char* kAbout =
    "Turns the raw frame of an intra-oral X-ray sensor into a diagnostic image.\n"
    "\n"
    "A frame is a picture of 16-bit grey levels, mostly of 12 significant bits (0 to 4095), in which a "
    "large\n"
    "value means much radiation. Frames come as\n"
    "  .raw   16-bit levels, low byte first, nothing else; the size is told by --size or by a\n"
    "         name such as tooth_1300x1668.raw (files with other endings are read as raw, too)\n"
    "  .pgm   binary grey map\n"
    "  .png   grey picture of 16 bits, or of 8\n";

constexpr const char* kExamples =
    "Examples:\n"
    "  Make a frame to play with, and process it:\n"
    "    vastrelline phantom --out tooth_1300x1668.raw\n"
    "    vastrelline run tooth_1300x1668.raw --profile profile.ini --section General --out tooth.png\n"
    "  See how two frames differ:\n"
    "    vastrelline compare before_1300x1668.raw after_1300x1668.raw\n"
    "\n"
    "Exit code: 0 success, 1 failure (for compare: the frames differ), 2 wrong use.\n"
    "'vastrelline COMMAND --help' tells a command's options.\n";

// A file name may hold anything, an error is one line.
std::string OneLine(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = '?';
    return text;
}

int ReportError(std::ostream& errors, const std::string& text, int exitCode) {
    errors << "vastrelline: " << OneLine(text) << '\n';
    return exitCode;
}

struct Commands {
    RunOptions run;
    PhantomOptions phantom;
    CompareOptions compare;
    CLI::App* runCommand = nullptr;
    CLI::App* phantomCommand = nullptr;

    int Execute(const ExportCaller& callExport, std::ostream& report) const {
        if (runCommand->parsed()) return ExecuteRun(run, callExport, report);
        if (phantomCommand->parsed()) return ExecutePhantom(phantom, report);
        return ExecuteCompare(compare, report);
    }
};

}  // namespace

int RunCommandLine(int argc, const char* const* argv, const ExportCaller& callExport, std::ostream& report,
                   std::ostream& errors) {
    try {
        CLI::App app(kAbout, "vastrelline");
        app.set_version_flag("--version", "vastrelline " VASTRELLINE_VERSION);
        app.footer(kExamples);
        app.require_subcommand(1);
        Commands commands;
        commands.runCommand = AddRunCommand(app, commands.run);
        commands.phantomCommand = AddPhantomCommand(app, commands.phantom);
        AddCompareCommand(app, commands.compare);
        try {
            app.parse(argc, argv);
        } catch (const CLI::Success& wish) {  // --help and --version
            return app.exit(wish, report, errors);
        } catch (const CLI::ParseError& error) {
            return ReportError(errors, std::string(error.what()) + " (see vastrelline --help)", kWrongUse);
        }
        const int exitCode = commands.Execute(callExport, report);
        if (!report.flush()) return ReportError(errors, "cannot write the report", kFailure);
        return exitCode;
    } catch (const UsageError& error) {
        return ReportError(errors, error.what(), kWrongUse);
    } catch (const std::bad_alloc&) {
        return ReportError(errors, "out of memory", kFailure);
    } catch (const std::exception& error) {
        return ReportError(errors, error.what(), kFailure);
    }
}

}  // namespace vastrelline
