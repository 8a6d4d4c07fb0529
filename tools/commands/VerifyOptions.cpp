// SPDX-License-Identifier: Apache-2.0
#include "commands/VerifyOptions.h"

#include <CLI/CLI.hpp>
#include <string>

#include "commands/JobsOption.h"
#include "commands/LibraryOption.h"
#include "commands/OutputEnding.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

constexpr double kMostSeconds = 86400.0;

void AddAddition(CLI::App& command, VerifyOptions& options) {
    command.add_flag("--add", options.isAdded,
                     "Add entries with what they give now, and make the manifest if it is missing");
    command
        .add_option("--frame", options.wishes.frames,
                    "With --add: a frame, or phantom[:SIZE[:DOSE[:SEED]]]; several options name several")
        ->type_name("FRAME");
    command.add_option("--profile", options.wishes.profiles, "With --add: a profile")->type_name("FILE");
    command
        .add_option("--section", options.wishes.sections,
                    "With --add: a section of the profiles; without it all that a host may name")
        ->type_name("SECTION");
    command
        .add_option("--export", options.wishes.exportName,
                    "With --add: the library's function; without it the one that runs what the section says")
        ->type_name("EXPORT");
}

}  // namespace

void AddVerifyOptions(CLI::App& command, VerifyOptions& options) {
    command.add_option("MANIFEST", options.manifest, "The manifest, a file of JSON")
        ->required()
        ->type_name("");
    AddAddition(command, options);
    command.add_flag("--update", options.isUpdated,
                     "Take what the entries give now for right; the old hashes are kept beside the new ones");
    command
        .add_option("--reason", options.reason, "With --update: why, for those who read the manifest later")
        ->type_name("TEXT");
    AddLibraryOption(command, "Another build of the library than the one that the tool is linked with",
                     "LIBRARY", options.library);
    AddJobsOption(command, "Runs that are made at a time, each in a process of its own", options.jobs);
    command
        .add_option_function<double>(
            "--timeout",
            [&options](double seconds) {
                options.hasTimeout = true;
                options.timeoutSeconds = seconds;
            },
            "The most time that one run may take")
        ->type_name("SECONDS");
    command.add_option("--junit", options.junit, "Where the results go as JUnit's XML, for build servers")
        ->type_name("FILE");
    command.add_flag("--force", options.mayReplace, "Replace the file of --junit if it exists");
}

void TestVerifyOptions(const VerifyOptions& options) {
    TestEnding(options.junit, ".xml", "--junit");
    const ProofWishes& wishes = options.wishes;
    const bool hasWishes = !wishes.frames.empty() || !wishes.profiles.empty() || !wishes.sections.empty() ||
                           !wishes.exportName.empty();
    if (options.isAdded && options.isUpdated)
        throw UsageError("--add and --update do not go together", "one adds entries, the other changes them");
    if (options.isAdded && (wishes.frames.empty() || wishes.profiles.empty()))
        throw UsageError("--add needs --frame and --profile");
    if (!options.isAdded && hasWishes)
        throw UsageError("--frame, --profile, --section and --export are for --add");
    if (options.isUpdated && options.reason.find_first_not_of(" \t\r\n") == std::string::npos)
        throw UsageError("--update needs a reason", "--reason 'why other results are right now'");
    if (!options.isUpdated && !options.reason.empty()) throw UsageError("--reason is for --update");
    if (options.hasTimeout && !(options.timeoutSeconds > 0.0 && options.timeoutSeconds <= kMostSeconds))
        throw UsageError("--timeout should be a number of seconds above 0");
    TestJobs(options.jobs);
}

}  // namespace vastrelline
