// SPDX-License-Identifier: Apache-2.0
#include "commands/SelftestCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

#include "commands/JobsOption.h"
#include "commands/JsonObject.h"
#include "commands/OutputEnding.h"
#include "commands/SelftestReport.h"
#include "commands/VerifyReport.h"
#include "files/OutputFile.h"
#include "files/Sha256.h"
#include "library/LibraryFile.h"
#include "messages/ToolError.h"
#include "messages/UtcTime.h"
#include "platform/Machine.h"
#include "proof/Installation.h"
#include "proof/ProofSuite.h"
#include "runs/ChildProcess.h"

namespace vastrelline {
namespace {

std::string DescribeMachine() {
    const MachineNames names = AskMachine();
    const std::string processor = names.processor.empty() ? "unknown processor" : names.processor;
    if (names.system.empty()) return processor;
    return names.host + ", " + names.system + " " + names.release + " " + names.architecture + ", " +
           processor;
}

// Runs the checks one after the other.
class Selftest {
public:
    Selftest(CommandContext& context, const Installation& installation, size_t jobs)
        : context_(context), installation_(installation), jobs_(jobs) {}

    SelftestCheck CheckFiles(const std::string& library) {
        SelftestCheck check{"Files", CheckState::Passed, "", {}};
        if (installation_.isBuildTree) {
            check.state = CheckState::Left;
            check.result = "this is a build tree, in which nothing was installed";
            return check;
        }
        std::vector<CheckedFile> files;
        try {
            files = CheckInstalledFiles(installation_);
        } catch (const InputError& error) {
            return {"Files", CheckState::Failed, "there is no list of the installed files", {error.what()}};
        }
        for (const CheckedFile& file : files)
            if (file.state != FileState::AsInstalled)
                check.faults.push_back(file.path + " is " + FileStateName(file.state));
        check.result = std::to_string(files.size()) + " files, " +
                       (check.faults.empty() ? std::string("all as installed")
                                             : std::to_string(check.faults.size()) + " not as installed");
        if (!IsOfInstallation(installation_, files, library))
            check.faults.push_back("the library that is loaded, " + library +
                                   ", is not the one of this installation");
        if (!check.faults.empty()) check.state = CheckState::Failed;
        return check;
    }

    SelftestCheck CheckPixels() {
        SelftestCheck check{"Pixels", CheckState::Passed, "", {}};
        return WithManifest(check, [&](const ProofManifest& manifest) {
            std::vector<const ProofEntry*> entries;
            for (const ProofEntry& entry : manifest.entries) entries.push_back(&entry);
            TakeResults(Run(manifest, entries, "", ""), check, "");
        });
    }

    // Phantoms alone: that the frames of the manifest are read is shown already.
    SelftestCheck CheckForms() {
        SelftestCheck check{"Instructions", CheckState::Passed, "", {}};
        return WithManifest(check, [&](const ProofManifest& manifest) {
            std::vector<const ProofEntry*> entries;
            for (const ProofEntry& entry : manifest.entries)
                if (entry.frame.phantom) entries.push_back(&entry);
            for (const char* const set : {"reference", "baseline", "avx2", "avx512"}) {
                check.result.append(check.result.empty() ? "" : "; ").append(set).append(": ");
                try {
                    TakeResults(Run(manifest, entries, installation_.forms, set), check, set);
                } catch (const InputError& error) {
                    if (!error.What().starts_with("has no forms")) throw;
                    check.result += "not on this machine";
                }
            }
        });
    }

private:
    template <typename Work>
    SelftestCheck WithManifest(SelftestCheck& check, const Work& work) const {
        try {
            work(ReadProofManifest(installation_.manifest));
        } catch (const CancelledError&) {
            throw;
        } catch (const ToolError& error) {
            check.state = CheckState::Failed;
            check.result.append("could not be looked at");
            check.faults.emplace_back(error.what());
        }
        return check;
    }

    std::vector<EntryResult> Run(const ProofManifest& manifest, const std::vector<const ProofEntry*>& entries,
                                 const std::string& library, const std::string& instructions) {
        const std::string what = instructions.empty() ? "entries" : "entries by " + instructions;
        Progress progress = context_.messages.Follow(what, entries.size());
        const ProofCall call{context_.callExport, library, instructions, std::nullopt, {}, phantoms_};
        return RunProofEntries(manifest, entries, ProofDepth::Compared, call, jobs_,
                               [&](size_t done, size_t unequal) { progress.Update(done, unequal); });
    }

    // What is not equal is a fault, what could not be read or run is one, too.
    static void TakeResults(const std::vector<EntryResult>& results, SelftestCheck& check,
                            const std::string& set) {
        check.result += SummariseResults(results);
        if (results.empty()) check.faults.emplace_back("the manifest has no such entries");
        for (const EntryResult& result : results)
            if (result.verdict.state != ProofState::Equal)
                check.faults.push_back((set.empty() ? "" : set + ": ") + NameProofEntry(*result.entry) +
                                       ": " + result.verdict.text);
        if (!check.faults.empty()) check.state = CheckState::Failed;
    }

    CommandContext& context_;
    const Installation& installation_;
    size_t jobs_;
    PhantomShelf phantoms_;
};

}  // namespace

std::string_view SelftestCommand::Examples() const {
    return "  vastrelline selftest\n"
           "  vastrelline selftest --report selftest.html\n"
           "  vastrelline selftest --only-files --json\n";
}

std::string_view SelftestCommand::Notes() const {
    return "It looks at the installed files by the list that the installation left, runs the manifest that "
           "came\n"
           "with it, and the phantoms of that once more by every instruction set of this machine: plain, "
           "baseline,\n"
           "AVX2, AVX-512. These are the forms of a second library of the same build, which can be limited. "
           "Exit\n"
           "code 1: something is changed, missing or different, and it is named. In a build tree there are "
           "no "
           "files\n"
           "to look at, and it says so.\n";
}

void SelftestCommand::AddOptions(CLI::App& command) {
    command.add_option("--report", report_, "Where a report goes as one HTML file, with lines for names")
        ->type_name("FILE");
    command.add_flag("--force", mayReplace_, "Replace the report if it exists");
    command.add_flag("--only-files", isFilesOnly_, "Look at the files and run nothing");
    AddJobsOption(command, "Runs that are made at a time, each in a process of its own", jobs_);
}

ExitCode SelftestCommand::Execute(CommandContext& context) {
    TestJobs(jobs_);
    std::optional<OutputFile> file;
    TestEnding(report_, ".html", "--report");
    if (!report_.empty()) file.emplace(report_, mayReplace_);
    const Installation installation = FindInstallation(OwnProgram());
    SelftestReport report{UtcMinute(), DescribeMachine(), OwnProgram(), LibraryFile(), "", {}};
    report.libraryHash = Sha256OfFile(report.library);
    Selftest test(context, installation, jobs_);
    report.checks.push_back(test.CheckFiles(report.library));
    if (isFilesOnly_) {
        report.checks.push_back({"Pixels", CheckState::Left, "as was asked for", {}});
        report.checks.push_back({"Instructions", CheckState::Left, "as was asked for", {}});
    } else {
        report.checks.push_back(test.CheckPixels());
        report.checks.push_back(test.CheckForms());
    }
    const ExitCode code = CodeOfSelftest(report);
    if (file) {
        file->Write(SelftestToHtml(report));
        file->Publish();
    }
    if (context.wantsJson)
        PrintObject(context, code, SelftestToJson(report));
    else
        context.report << FormatSelftest(report)
                       << (file ? "report        " + report_ + "\n" : std::string());
    return code;
}

}  // namespace vastrelline
